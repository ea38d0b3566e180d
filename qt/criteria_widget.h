#pragma once
// The criteria controls as widgets that a host form places like any other: SeleccionCliWidget
// and SeleccionInmWidget. Each owns its control's creatable object (selection/criteria_objects.h)
// and shows the control's inputs through a FormView, so the control's members work on the
// widget's inputs at once: Control() for C++, Object() for late binding by name.
//
// The persisted properties are Qt properties ("Pestania", "NomTab0", "NomTab1", and "NomTab2"
// on the property control), so Qt Designer edits them and a form saved by Designer restores
// them when it is loaded. A tab the control does not have leaves Pestania as it was.
//
// criteriaChanged() tells the host that the condition may have changed (a text, check box,
// date or list choice of the control changed), so that it can show SelecWhere as the user
// types. It is sent from the event loop, once after a burst of changes such as a restore.
#include <memory>

#include <QString>
#include <QWidget>

#include "selection/criteria_objects.h"

namespace cp {

class FormView;

class CriteriaControlWidget : public QWidget {
  Q_OBJECT
  Q_PROPERTY(int Pestania READ Pestania WRITE setPestania)
  Q_PROPERTY(QString NomTab0 READ NomTab0 WRITE setNomTab0)
  Q_PROPERTY(QString NomTab1 READ NomTab1 WRITE setNomTab1)

 public:
  ~CriteriaControlWidget() override;

  SelectionControl& Control() const { return object_->Control(); }
  // The control's creatable object: its members by name, and its property bag.
  std::shared_ptr<CriteriaControlObject> Object() const { return object_; }
  FormView& View() const { return *view_; }

  int Pestania() const;
  void setPestania(int tab);
  QString NomTab0() const { return NomTab(0); }
  void setNomTab0(const QString& caption) { setNomTab(0, caption); }
  QString NomTab1() const { return NomTab(1); }
  void setNomTab1(const QString& caption) { setNomTab(1, caption); }

 signals:
  void criteriaChanged();

 protected:
  CriteriaControlWidget(std::shared_ptr<CriteriaControlObject> object, QWidget* parent);
  QString NomTab(int tab) const;
  void setNomTab(int tab, const QString& caption);
  // The control's Show: the focus goes to the first input of the current tab.
  void showEvent(QShowEvent* event) override;
  virtual void UserControl_Show() = 0;

 private:
  void ScheduleChanged();

  std::shared_ptr<CriteriaControlObject> object_;
  FormView* view_;
  int observerId_ = 0;
  bool changePending_ = false;
};

class SeleccionCliWidget : public CriteriaControlWidget {
  Q_OBJECT

 public:
  explicit SeleccionCliWidget(QWidget* parent = nullptr);
  SeleccionCli& Control() const { return cli_.Control(); }

 protected:
  void UserControl_Show() override { Control().UserControl_Show(); }

 private:
  SeleccionCliObject& cli_;
};

class SeleccionInmWidget : public CriteriaControlWidget {
  Q_OBJECT
  Q_PROPERTY(QString NomTab2 READ NomTab2 WRITE setNomTab2)

 public:
  explicit SeleccionInmWidget(QWidget* parent = nullptr);
  SeleccionInm& Control() const { return inm_.Control(); }

  QString NomTab2() const { return NomTab(2); }
  void setNomTab2(const QString& caption) { setNomTab(2, caption); }

 protected:
  void UserControl_Show() override { Control().UserControl_Show(); }

 private:
  SeleccionInmObject& inm_;
};

}  // namespace cp
