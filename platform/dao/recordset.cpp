#include "platform/dao/recordset.h"

#include <stdexcept>
#include <utility>
#include <vector>

#include "platform/core/error.h"
#include "platform/dao/dao_errors.h"
#include "platform/jetsql/translator.h"

namespace cp::dao {

class Recordset::State : public detail::CurrentRow {
 public:
  State(std::shared_ptr<Engine> engine, std::unique_ptr<Cursor> cursor, RecordsetType type)
      : engine_(std::move(engine)), type_(type), columns_(cursor->Columns()) {
    if (type_ == RecordsetType::Snapshot) {
      while (cursor->Next()) rows_.push_back(ReadRow(*cursor));
      inferred_.assign(columns_.size(), dbText);
      for (std::size_t c = 0; c < columns_.size(); ++c) {
        for (const auto& row : rows_) {
          if (!std::holds_alternative<std::monostate>(row[c])) {
            inferred_[c] = TypeOfValue(row[c]);
            break;
          }
        }
      }
    } else {
      cursor_ = std::move(cursor);
      Advance();
    }
  }

  bool closed() const { return closed_; }
  void Close() {
    closed_ = true;
    cursor_.reset();
    rows_.clear();
    current_.clear();
    on_row_ = false;
  }

  RecordsetType type() const { return type_; }
  const std::vector<ColumnInfo>& columns() const { return columns_; }

  bool Eof() const {
    return type_ == RecordsetType::Snapshot ? position_ >= rows_.size() : !on_row_;
  }
  bool Empty() const {
    return type_ == RecordsetType::Snapshot ? rows_.empty() : reached_ == 0;
  }
  long Count() const {
    return type_ == RecordsetType::Snapshot ? static_cast<long>(rows_.size()) : reached_;
  }

  void MoveNext() {
    if (Eof()) RaiseDao(daoerr::kNoCurrentRecord, kRecordsetSource);
    if (type_ == RecordsetType::Snapshot) {
      ++position_;
    } else {
      try {
        Advance();
      } catch (const Error& e) {
        RethrowWithSource(e, kRecordsetSource);
      }
    }
  }

  void MoveFirst() {
    if (type_ != RecordsetType::Snapshot) RaiseDao(daoerr::kNotForThisType, kRecordsetSource);
    if (rows_.empty()) RaiseDao(daoerr::kNoCurrentRecord, kRecordsetSource);
    position_ = 0;
  }

  void FindFirst(const std::string& criterion) {
    if (type_ != RecordsetType::Snapshot) RaiseDao(daoerr::kNotForThisType, kRecordsetSource);
    // The criterion runs over values bound as parameters, not over table columns, so the
    // engine's translation options could vouch for nothing here.
    const std::string condition = jetsql::TranslateCondition(criterion, engine_->dialect());
    std::vector<std::string> names;
    for (const auto& c : columns_) names.push_back(c.name);
    try {
      auto filter = engine_->PrepareRowFilter(names, condition);
      for (std::size_t i = 0; i < rows_.size(); ++i) {
        if (filter->Matches(rows_[i])) {
          position_ = i;
          no_match_ = false;
          return;
        }
      }
    } catch (const Error& e) {
      RethrowWithSource(e, kRecordsetSource);
    }
    no_match_ = true;
  }
  bool NoMatch() const { return no_match_; }

  const Cell& Current(int column) const override {
    if (closed_) RaiseDao(daoerr::kObjectInvalid, kRecordsetSource);
    if (Eof()) RaiseDao(daoerr::kNoCurrentRecord, kRecordsetSource);
    if (type_ == RecordsetType::Snapshot) return rows_[position_].at(static_cast<std::size_t>(column));
    return CurrentCell(column);
  }

  int InferredType(int column) const override {
    if (type_ == RecordsetType::Snapshot) return inferred_.at(static_cast<std::size_t>(column));
    if (closed_ || Eof()) return dbText;
    return TypeOfValue(CurrentCell(column));
  }

 private:
  std::vector<Cell> ReadRow(const Cursor& cursor) const {
    std::vector<Cell> row;
    row.reserve(columns_.size());
    for (std::size_t c = 0; c < columns_.size(); ++c)
      row.push_back(cursor.Value(static_cast<int>(c)));
    return row;
  }

  // Forward-only: steps to the next row, or at the end lets the engine's statement go at once.
  void Advance() {
    if (cursor_ && cursor_->Next()) {
      on_row_ = true;
      read_.assign(columns_.size(), false);
      ++reached_;
    } else {
      on_row_ = false;
      cursor_.reset();
    }
  }

  // Forward-only rows are read a column at a time, when asked: counting rows, as a match
  // does, then costs no conversions at all.
  const Cell& CurrentCell(int column) const {
    const auto c = static_cast<std::size_t>(column);
    if (c >= columns_.size()) throw std::out_of_range("column");
    if (current_.size() != columns_.size()) current_.resize(columns_.size());
    if (!read_[c]) {
      current_[c] = cursor_->Value(column);
      read_[c] = true;
    }
    return current_[c];
  }

  std::shared_ptr<Engine> engine_;
  RecordsetType type_;
  std::vector<ColumnInfo> columns_;
  bool closed_ = false;
  bool no_match_ = false;
  // Snapshot.
  std::vector<std::vector<Cell>> rows_;
  std::vector<int> inferred_;
  std::size_t position_ = 0;
  // Forward-only.
  std::unique_ptr<Cursor> cursor_;
  bool on_row_ = false;  // false at EOF
  mutable std::vector<Cell> current_;
  mutable std::vector<bool> read_;
  long reached_ = 0;
};

Recordset::Recordset(std::shared_ptr<Engine> engine, std::unique_ptr<Cursor> cursor,
                     RecordsetType type)
    : state_(std::make_shared<State>(std::move(engine), std::move(cursor), type)) {}

Recordset::Recordset(Recordset&&) noexcept = default;

Recordset& Recordset::operator=(Recordset&& other) noexcept {
  if (this != &other) {
    if (state_) state_->Close();
    state_ = std::move(other.state_);
  }
  return *this;
}

Recordset::~Recordset() {
  if (state_) state_->Close();
}

Recordset::State& Recordset::Live() const {
  if (!state_ || state_->closed()) RaiseDao(daoerr::kObjectInvalid, kRecordsetSource);
  return *state_;
}

RecordsetType Recordset::Type() const { return Live().type(); }
bool Recordset::Eof() const { return Live().Eof(); }
bool Recordset::Bof() const { return Live().Empty(); }
long Recordset::RecordCount() const { return Live().Count(); }
void Recordset::MoveNext() { Live().MoveNext(); }
void Recordset::MoveFirst() { Live().MoveFirst(); }
int Recordset::FieldCount() const { return static_cast<int>(Live().columns().size()); }

Field Recordset::Fields(const std::string& name) const {
  const auto& columns = Live().columns();
  for (std::size_t i = 0; i < columns.size(); ++i)
    if (SameName(columns[i].name, name)) return Fields(static_cast<int>(i));
  RaiseDao(daoerr::kItemNotFound, kRecordsetSource);
}

Field Recordset::Fields(int index) const {
  const auto& columns = Live().columns();
  if (index < 0 || index >= static_cast<int>(columns.size()))
    RaiseDao(daoerr::kItemNotFound, kRecordsetSource);
  const ColumnInfo& column = columns[static_cast<std::size_t>(index)];
  FieldDefinition definition{column.name, column.declared.type, column.declared.size,
                             column.declared.type == dbText || column.declared.type == dbMemo
                                 ? dbVariableField
                                 : dbFixedField};
  return Field(std::move(definition), state_, index);
}

void Recordset::FindFirst(const std::string& criterion) { Live().FindFirst(criterion); }
bool Recordset::NoMatch() const { return Live().NoMatch(); }

void Recordset::Close() { Live().Close(); }

}  // namespace cp::dao
