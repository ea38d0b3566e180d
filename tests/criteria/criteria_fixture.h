#pragma once
// The builders' tests: "today" fixed at 15 November 2026, a form to place criteria controls on,
// and one database with rows on both sides of every bound the tests use.
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "common/shared_state.h"
#include "platform/core/conversions.h"
#include "platform/dao/connect.h"
#include "platform/form/check_box.h"
#include "platform/form/control_container.h"
#include "platform/form/date_picker.h"
#include "platform/form/text_box.h"
#include "platform/sqlite/native.h"
#include "tests/common/common_fixture.h"
#include "tests/support/scratch_db.h"

namespace cp::testing {

// Property ids 1-9 and demand ids 1-10 are referred to by the tests' expectations.
inline const char* const kFixtureRows = R"SQL(
INSERT INTO Zona (IdZona, Nombre) VALUES (4, 'Madrid'), (9, 'Sevilla'), (5, 'Ávila'),
  (6, 'O''Donnell'), (7, 'Norte|Sur');
INSERT INTO Usuario (IdUsuario, Nombre) VALUES (3, 'Ana Pérez'), (5, 'Juan'),
  (8, 'ÁLVARO PÉREZ');
INSERT INTO IPropio (IdIPropio, FechaAlta, Huecos, Amueblado, Exclusividad, IdZona, IdUsuario)
VALUES
  (1, '2005-03-06', 2, 0, 0, 4, 3),
  (2, '2005-03-07', 3, 1, 1, 9, 8),
  (3, '2005-12-31', 4, 2, 0, NULL, NULL),
  (4, '2005-12-31 15:00:00', NULL, NULL, 1, 5, 5),
  (5, '2006-01-01', 5, 1, 0, 6, 5),
  (6, '2026-11-14', 1, 0, 1, 7, 3),
  (7, '2026-11-15', 0, 2, 0, 4, 8),
  (8, '2026-11-16', 3, 1, 1, 9, 5),
  (9, NULL, NULL, NULL, 0, NULL, NULL);
INSERT INTO Demanda (IdDemanda, PrecioMinimo, PrecioMaximo, TipoInmueble, Zona) VALUES
  (1, 100000, 200000, 'Piso; ', 'O''Donnell; Centro; '),
  (2, 150000, 150000, 'Piso; Local; ', 'Norte|Sur; '),
  (3, 150001, 300000, 'Local; Piso; ', 'Centro; '),
  (4, 50000, 149999, 'Ático; Piso; Local; ', 'Norte; '),
  (5, NULL, 150000, 'Pisos; ', ''),
  (6, NULL, 149999, '', NULL),
  (7, 150000, NULL, NULL, 'Centro; O''Donnell; '),
  (8, 150001, NULL, 'Local; ', 'Sur; '),
  (9, NULL, NULL, 'PISO; ', 'ávila; '),
  (10, 10, 20, 'Casa; Mi Piso; ', 'Ávila; Centro; ');
CREATE TABLE Codigo (IdCodigo VARCHAR(10), Nombre VARCHAR(50));
INSERT INTO Codigo VALUES ('A7', 'Alfa'), ('B2', 'Beta');
)SQL";

using Ids = std::vector<long>;

class CriteriaTest : public CommonTest {
 protected:
  static void SetUpTestSuite() { path_ = ScratchDb::Create("cp_criteria", kFixtureRows); }
  static void TearDownTestSuite() { std::filesystem::remove(path_); }
  void SetUp() override {
    CommonTest::SetUp();
    SetFixedNow(MakeDate(2026, 11, 15, 10, 30, 0));
  }

  // The rows a condition selects, on Demanda when it names that table, else on IPropio.
  Ids Rows(const std::string& where) {
    const bool demand = where.find("Demanda.") != std::string::npos;
    const std::string key = demand ? "IdDemanda" : "IdIPropio";
    Ids ids;
    for (dao::Recordset rs = BD()->OpenRecordset("SELECT " + key + " FROM " +
                                                 (demand ? "Demanda" : "IPropio") + " WHERE " +
                                                 where + " ORDER BY " + key);
         !rs.Eof(); rs.MoveNext())
      ids.push_back(CLng(rs.Fields(0).Value()));
    return ids;
  }

  // A builder's case: the condition before the call, the exact text after it and, where the
  // text stands alone, the rows it selects.
  struct BuilderCase {
    std::string name;
    std::function<void(std::string&)> build;
    std::string before, text;
    std::optional<Ids> rows = {};
  };
  void CheckCases(const std::vector<BuilderCase>& cases) {
    for (const auto& c : cases) {
      SCOPED_TRACE(c.name);
      std::string where = c.before;
      c.build(where);
      EXPECT_EQ(where, c.text);
      if (c.rows) { EXPECT_EQ(Rows(where), *c.rows) << where; }
    }
    EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
  }

  form::TextBox& Text(const std::string& text, int index = -1) {
    auto& box = form_.AddTextBox("txt" + std::to_string(++counter_), index);
    box.setText(text);
    return box;
  }
  form::CheckBox& Check(int value) {
    auto& box = form_.AddCheckBox("chk" + std::to_string(++counter_));
    box.setValue(value);
    return box;
  }
  // Element index of a date-picker array; a Null value unchecks it.
  form::DTPicker& Picker(int index, const Variant& value) {
    auto& picker = form_.AddDTPicker("dtp" + std::to_string(++counter_), index);
    picker.setValue(value);
    return picker;
  }

  form::Form form_{"frmPrueba"};
  int counter_ = 0;
  static inline std::string path_;
  ProcessSlot<std::shared_ptr<dao::Database>>::Scoped database_{DatabaseSlot(),
                                                                dao::OpenDatabase(path_)};
};

}  // namespace cp::testing
