// The Qt Designer plug-in as Designer sees it: loaded by QPluginLoader into a program that
// links nothing of ours, it offers both controls, creates each one, and their persisted
// properties are designable and change what the widget shows.
#include <gtest/gtest.h>

#include <iterator>
#include <vector>

#include <QApplication>
#include <QMetaProperty>
#include <QPluginLoader>
#include <QTabWidget>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

namespace {

class GuiEnvironment : public ::testing::Environment {
 public:
  void SetUp() override { app_ = new QApplication(argc_, argv_); }
  void TearDown() override { delete app_; }

 private:
  int argc_ = 1;
  char name_[14] = "test_designer";
  char* argv_[2] = {name_, nullptr};
  QApplication* app_ = nullptr;
};
::testing::Environment* const kGui = ::testing::AddGlobalTestEnvironment(new GuiEnvironment);

TEST(DesignerPlugin, OffersBothControlsWithTheirPersistedPropertiesEditable) {
  QPluginLoader loader(QStringLiteral(CP_DESIGNER_PLUGIN));
  auto* collection = qobject_cast<QDesignerCustomWidgetCollectionInterface*>(loader.instance());
  ASSERT_NE(collection, nullptr) << loader.errorString().toStdString();
  const struct {
    const char *className, *objectName;
    int tabs;
    std::vector<const char*> persisted;
  } cases[] = {
      {"cp::SeleccionCliWidget", "seleccionCli", 2, {"Pestania", "NomTab0", "NomTab1"}},
      {"cp::SeleccionInmWidget", "seleccionInm", 5, {"Pestania", "NomTab0", "NomTab1", "NomTab2"}},
  };
  const QList<QDesignerCustomWidgetInterface*> entries = collection->customWidgets();
  ASSERT_EQ(entries.size(), qsizetype(std::size(cases)));
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    const auto& t = cases[i];
    QDesignerCustomWidgetInterface& entry = *entries[int(i)];
    SCOPED_TRACE(t.className);
    EXPECT_EQ(entry.name(), QLatin1String(t.className));
    EXPECT_TRUE(entry.domXml().contains(
        QStringLiteral("class=\"%1\" name=\"%2\"").arg(t.className, t.objectName)));
    EXPECT_EQ(entry.includeFile(), QStringLiteral("qt/criteria_widget.h"));  // as installed

    QWidget form;
    QWidget* widget = entry.createWidget(&form);
    ASSERT_NE(widget, nullptr);
    EXPECT_STREQ(widget->metaObject()->className(), t.className);
    auto* strip = widget->findChild<QTabWidget*>(QStringLiteral("tbsSelec"));
    ASSERT_NE(strip, nullptr);
    EXPECT_EQ(strip->count(), t.tabs);
    for (const char* name : t.persisted) {
      SCOPED_TRACE(name);
      const QMetaProperty property =
          widget->metaObject()->property(widget->metaObject()->indexOfProperty(name));
      EXPECT_TRUE(property.isValid() && property.isDesignable() && property.isWritable());
      if (QByteArray(name) == "Pestania") {
        EXPECT_TRUE(widget->setProperty(name, 1));
        EXPECT_EQ(strip->currentIndex(), 1);
        widget->setProperty(name, t.tabs);  // no such tab: refused, nothing changes
        EXPECT_EQ(widget->property(name).toInt(), 1);
        EXPECT_EQ(strip->currentIndex(), 1);
      } else {
        const int tab = name[6] - '0';
        EXPECT_TRUE(widget->setProperty(name, QStringLiteral("Ficha %1").arg(tab)));
        EXPECT_EQ(strip->tabText(tab), QStringLiteral("Ficha %1").arg(tab));
        EXPECT_EQ(widget->property(name).toString(), strip->tabText(tab));
      }
    }
  }
}

}  // namespace
