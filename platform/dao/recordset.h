#pragma once
// Recordset: the rows of one Jet SELECT, as DAO gives them. A snapshot reads every row when it
// opens (so it can count, rewind and search); a forward-only recordset reads one row at a time
// and can only move next. A recordset closes itself when destroyed.
#include <memory>
#include <string>

#include "platform/dao/engine.h"
#include "platform/dao/field.h"

namespace cp::dao {

class Recordset {
 public:
  // Takes a freshly run query. A snapshot reads all of its rows now (engine errors raise with
  // the engine's source); both kinds are then positioned on the first row, or at EOF.
  Recordset(std::shared_ptr<Engine> engine, std::unique_ptr<Cursor> cursor, RecordsetType type);
  Recordset(Recordset&&) noexcept;
  Recordset& operator=(Recordset&&) noexcept;
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;
  ~Recordset();

  RecordsetType Type() const;
  // True past the last row (and at once for an empty result). Named Eof/Bof because EOF is a
  // C macro.
  bool Eof() const;
  // True only when the recordset is empty: without MovePrevious the position never goes
  // before the first row.
  bool Bof() const;
  // A snapshot: the number of rows it holds, known as soon as it opens. Forward-only: the
  // number of rows reached so far (DAO counts accessed rows).
  long RecordCount() const;
  // Moves to the next row; 3021 when already at EOF.
  void MoveNext();
  // Back to the first row of a snapshot; 3021 when it is empty, 3251 on forward-only.
  void MoveFirst();

  // The columns, in statement order. Fields(name) finds a name in any case (the first of
  // equal names); an unknown name or an index out of range raises 3265.
  int FieldCount() const;
  Field Fields(const std::string& name) const;
  Field Fields(int index) const;

  // Searches a snapshot from its first row for the first row where the Jet condition holds
  // (the condition names the recordset's columns; text comparison follows Jet, case- and
  // accent-capital-insensitive). Found: that row becomes current and NoMatch() is false.
  // Not found: the current row stays and NoMatch() is true. Raises 3251 on forward-only;
  // unknown columns 3070, syntax errors 3077 or the translator's error.
  void FindFirst(const std::string& criterion);
  bool NoMatch() const;

  // Releases the rows and the engine's statement; any later use (also through a Field taken
  // earlier) raises 3420, as does closing twice.
  void Close();

  class State;

 private:
  State& Live() const;  // 3420 when closed or moved from
  std::shared_ptr<State> state_;
};

}  // namespace cp::dao
