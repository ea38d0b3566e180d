#pragma once
// Date columns that can only hold ISO text. A date compared with a literal normally goes
// through jet_date, which brings every stored form (ISO text, a midnight time, a Jet serial,
// "dd/mm/yyyy") to ISO text; that call keeps SQLite from using an index on the column. A
// column whose CHECK admits only the forms jet_date leaves unchanged can be compared bare.
// Our schema writes that CHECK; the engine recognises it by its exact text, so a file written
// by anyone else simply keeps the jet_date form.
#include <string>
#include <string_view>
#include <vector>

namespace cp::sqlite {

// The column constraint "CHECK (...)" that admits only Null, 'yyyy-mm-dd' and
// 'yyyy-mm-dd hh:mm:ss' with a time other than 00:00:00 (jet_date drops a midnight time).
// Digits only, checked by GLOB: a shape that is no real date ('2024-02-30') passes, and
// jet_date leaves such a value unchanged as well. Standard SQLite, so any tool can write
// the file.
std::string IsoDateCheck(std::string_view column);

// The columns of a CREATE TABLE text that carry IsoDateCheck exactly, as the check names
// them (in order of appearance).
std::vector<std::string> IsoDateCheckedColumns(std::string_view createTable);

}  // namespace cp::sqlite
