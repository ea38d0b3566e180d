#pragma once
// A host of the selection object for tests: the shared routines in a known state (scripted
// messenger, log folder), today fixed at 15 November 2026, and a fresh CSeleccion on the
// suite's database, whose path a suite sets in its SetUpTestSuite.
#include <memory>
#include <string>

#include "common/shared_state.h"
#include "platform/core/clock.h"
#include "platform/dao/connect.h"
#include "selection/c_seleccion.h"
#include "tests/common/common_fixture.h"

namespace cp::testing {

class HostTest : public CommonTest {
 protected:
  void SetUp() override {
    CommonTest::SetUp();
    SetFixedNow(MakeDate(2026, 11, 15, 10, 30, 0));
    sel_ = std::make_unique<CSeleccion>();
    sel_->setBD(dao::OpenDatabase(path_));
    sel_->setPathDB(path_);
  }
  void TearDown() override {
    sel_.reset();
    setBD(nullptr);
    CommonTest::TearDown();
  }

  std::unique_ptr<CSeleccion> sel_;
  static inline std::string path_;
};

}  // namespace cp::testing
