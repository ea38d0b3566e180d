// The test program's QApplication lives from before the first test to after the last one.
// Left to a function-local static, it would be destroyed among the exit handlers, after
// Qt's own per-thread data is gone, and crash the run at exit.
#include <gtest/gtest.h>

#include <QApplication>

#include "tests/qt/gui_dialog_support.h"

namespace cp::testing {
namespace {

class GuiEnvironment : public ::testing::Environment {
 public:
  void SetUp() override {
    if (!QCoreApplication::instance()) app_ = new QApplication(argc_, argv_);
  }
  void TearDown() override {
    delete app_;
    app_ = nullptr;
  }

 private:
  int argc_ = 1;
  char name_[8] = "test_qt";
  char* argv_[2] = {name_, nullptr};
  QApplication* app_ = nullptr;
};

[[maybe_unused]] ::testing::Environment* const kGui =
    ::testing::AddGlobalTestEnvironment(new GuiEnvironment);

}  // namespace
}  // namespace cp::testing
