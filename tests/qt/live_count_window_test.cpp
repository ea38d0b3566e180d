// The selection window's running count: a line under the criteria when the host turns it on,
// nothing (no line, no thread) otherwise.
#include <QLabel>

#include "qt/live_count_label.h"
#include "tests/qt/gui_support.h"

namespace cp::testing {
namespace {

using LiveCountWindowTest = SelectionWindowTest;

TEST_F(LiveCountWindowTest, TheCountFollowsTyping) {
  sel_->setLiveCount(true);
  sel_->setEntidad("Clientes");
  const EntityInfo& clientes = *FindEntity("Clientes");
  ShowWindow([&](SelectionWindow& w) {
    LiveCountLabel* count = w.Count();
    ASSERT_NE(count, nullptr);
    EXPECT_EQ(CountWorker::Alive(), 1);
    QTRY_COMPARE(count->text(), QStringLiteral("5 clientes"));
    QWidget* words = Cli(w, "txtPalabras");
    TypeText(words, QStringLiteral("garcía"));
    // What accepting now would select, through the host's own query.
    const std::string where = sel_->Dialog().SeleccionCli1().SelecWhere();
    const auto expected = QString::fromStdString(CountText(clientes, Clients(where).size()));
    EXPECT_NE(expected, QStringLiteral("5 clientes"));
    QTRY_COMPARE(count->text(), expected);
    TypeText(words, QStringLiteral("zzz"));
    QTRY_COMPARE(count->text(), QStringLiteral("Ningún cliente"));
    Click(w, "cmdCancelar");
  });
  EXPECT_EQ(CountWorker::Alive(), 0);
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

TEST_F(LiveCountWindowTest, OffByDefault) {
  sel_->setEntidad("Inm. Propios");
  ShowWindow([&](SelectionWindow& w) {
    EXPECT_EQ(w.Count(), nullptr);
    EXPECT_EQ(w.findChild<LiveCountLabel*>(), nullptr);
    EXPECT_EQ(CountWorker::Alive(), 0);
    Click(w, "cmdCancelar");
  });
}

}  // namespace
}  // namespace cp::testing
