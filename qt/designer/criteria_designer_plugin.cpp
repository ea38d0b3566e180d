// The Qt Designer plug-in: puts SeleccionCliWidget and SeleccionInmWidget in the widget box,
// under "CriterioPredios", where their persisted properties are edited like any other.
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

#include <functional>

#include <QObject>

#include "qt/criteria_widget.h"

namespace cp {
namespace {

// One control's entry in the widget box.
class CriteriaWidgetEntry : public QObject, public QDesignerCustomWidgetInterface {
  Q_OBJECT
  Q_INTERFACES(QDesignerCustomWidgetInterface)

 public:
  using Factory = std::function<QWidget*(QWidget* parent)>;
  CriteriaWidgetEntry(QString className, QString toolTip, Factory factory, QObject* parent)
      : QObject(parent),
        className_(std::move(className)),
        toolTip_(std::move(toolTip)),
        factory_(std::move(factory)) {}

  QString name() const override { return className_; }
  QString group() const override { return QStringLiteral("CriterioPredios"); }
  QString toolTip() const override { return toolTip_; }
  QString whatsThis() const override { return toolTip_; }
  QString includeFile() const override { return QStringLiteral("qt/criteria_widget.h"); }
  QIcon icon() const override { return {}; }
  bool isContainer() const override { return false; }
  QWidget* createWidget(QWidget* parent) override { return factory_(parent); }
  // The object name a new one gets on the form: "seleccionInm" for cp::SeleccionInmWidget.
  QString domXml() const override {
    QString object = className_.section(QStringLiteral("::"), -1);
    object.chop(int(sizeof("Widget")) - 1);
    object[0] = object[0].toLower();
    return QStringLiteral("<ui language=\"c++\"><widget class=\"%1\" name=\"%2\"/></ui>")
        .arg(className_, object);
  }

 private:
  QString className_;
  QString toolTip_;
  Factory factory_;
};

}  // namespace

class CriteriaWidgetCollection : public QObject, public QDesignerCustomWidgetCollectionInterface {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
  Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)

 public:
  explicit CriteriaWidgetCollection(QObject* parent = nullptr) : QObject(parent) {
    entries_ = {
        new CriteriaWidgetEntry(
            QStringLiteral("cp::SeleccionCliWidget"),
            QStringLiteral("Criterios de contactos (clientes, agencias, abogados...)"),
            [](QWidget* parent) { return new SeleccionCliWidget(parent); }, this),
        new CriteriaWidgetEntry(
            QStringLiteral("cp::SeleccionInmWidget"),
            QStringLiteral("Criterios de inmuebles y demandas"),
            [](QWidget* parent) { return new SeleccionInmWidget(parent); }, this)};
  }
  QList<QDesignerCustomWidgetInterface*> customWidgets() const override { return entries_; }

 private:
  QList<QDesignerCustomWidgetInterface*> entries_;
};

}  // namespace cp

#include "criteria_designer_plugin.moc"
