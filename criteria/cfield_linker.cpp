#include "criteria/cfield_linker.h"

#include "common/error_handler.h"
#include "common/list_picker.h"
#include "common/shared_state.h"
#include "common/sql_text.h"
#include "platform/core/conversions.h"
#include "platform/core/string_functions.h"
#include "platform/core/error.h"
#include "platform/dao/recordset.h"

namespace cp {

namespace {

constexpr const char* kSource = "CFieldLinker";

std::string Label(const std::string& member) { return member + " of CFieldLinker class"; }

}  // namespace

void CFieldLinker::RequireInitialized() const {
  if (!initialized_) {
    throw Error(ownerr::kLinkerNotInitialized, "The instance is not initialized yet.", kSource);
  }
}

void CFieldLinker::Init(const std::string& mainTable, const std::string& lookupTable,
                        const Variant& idField, const Variant& nameField,
                        const Variant& separator) {
  if (initialized_) {
    throw Error(ownerr::kLinkerAlreadyInitialized, "The instance is already initialized.",
                kSource);
  }
  Atrapar(Label("Init() method"), [&] {
    // Convert everything first so that a bad argument leaves the linker unbound.
    std::string id = CStr(idField), name = CStr(nameField), sep = CStr(separator);
    mainTable_ = mainTable;
    lookupTable_ = lookupTable;
    idField_ = std::move(id);
    nameField_ = std::move(name);
    separator_ = std::move(sep);
    value_.clear();
    previousValue_.clear();
    values_.clear();
    moreValues_ = false;
    isEmpty_ = true;
    cachedId_ = kNotFound;
    initialized_ = true;
  });
}

const std::string& CFieldLinker::Value() const {
  RequireInitialized();
  return value_;
}

void CFieldLinker::setValue(const std::string& value) {
  RequireInitialized();
  Atrapar(Label("Value property [Let]"), [&] {
    value_ = value;
    std::string s = Trim(value);
    if (!separator_.empty() && s.ends_with(separator_)) s.resize(s.size() - separator_.size());
    values_ = Split(s, separator_);
    // Bounds as the runtime's array would have them: 0 To n-1, -1 upper bound when empty.
    const int upper = static_cast<int>(values_.size()) - 1;
    isEmpty_ = upper == -1;
    moreValues_ = upper - 0 >= 1;
  });
}

const std::string& CFieldLinker::PreviousValue() const {
  RequireInitialized();
  return previousValue_;
}

void CFieldLinker::setPreviousValue(const std::string& value) {
  RequireInitialized();
  previousValue_ = value;
}

const std::string& CFieldLinker::Filter() const {
  RequireInitialized();
  return filter_;
}

void CFieldLinker::setFilter(const std::string& filter) {
  RequireInitialized();
  filter_ = filter;
}

bool CFieldLinker::MoreValues() const {
  RequireInitialized();
  return moreValues_;
}

bool CFieldLinker::IsEmpty() const {
  RequireInitialized();
  return isEmpty_;
}

int CFieldLinker::ValuesCount() const {
  RequireInitialized();
  // Upper bound minus lower bound: one less than the number of names. Every caller loops
  // from 0 to this value inclusive, so it stays as it is.
  return static_cast<int>(values_.size()) - 1;
}

std::int32_t CFieldLinker::ID(std::optional<int> index) {
  RequireInitialized();
  std::int32_t result = 0;
  Atrapar(Label("ID property [Get]"), [&] {
    if (!index) {
      if (moreValues_) {
        result = kAmbiguous;
        return;
      }
      index = 0;
    }
    if (*index < 0 || *index >= static_cast<int>(values_.size())) Raise(err::kSubscriptOutOfRange);
    const std::string v = Trim(values_[static_cast<std::size_t>(*index)]);
    dao::Recordset rs = RequireBD().OpenRecordset(NameLookupQuery(v), dao::dbOpenForwardOnly);
    cachedId_ = rs.Eof() ? kNotFound : CLng(rs.Fields(idField_).Value());
    rs.Close();
    result = cachedId_;
  });
  return result;
}

std::string CFieldLinker::GenerarCondicionSQL() {
  RequireInitialized();
  std::string s;
  Atrapar(Label("GenerarCondicionSQL property [Get]"), [&] {
    std::string text;
    for (int i = 0; i <= ValuesCount(); ++i) {
      if (i > 0) text += " OR ";
      text += "(" + idField_ + "=" + std::to_string(ID(i)) + ")";
    }
    if (ValuesCount() > 0) text = "(" + text + ")";
    s = std::move(text);
  });
  return s;
}

std::string CFieldLinker::NameLookupQuery(const std::string& name) const {
  RequireInitialized();
  return "SELECT " + idField_ + " " + "FROM   " + lookupTable_ + " " + "WHERE  " + nameField_ +
         " = " + ComillaSQL(name);
}

std::string CFieldLinker::UsedValuesQuery() const {
  RequireInitialized();
  std::string sql = "SELECT DISTINCT " + nameField_ + " FROM " + lookupTable_ + " ";
  // Through the main table only the names it uses are offered.
  if (lookupTable_ != mainTable_) {
    sql += " INNER JOIN " + mainTable_ + " " + "ON " + mainTable_ + "." + idField_ + " = " +
           lookupTable_ + "." + idField_;
  }
  if (!filter_.empty()) sql += " WHERE  " + filter_;
  return sql;
}

std::string CFieldLinker::OpenPicker(const std::string& title, std::int16_t kind) {
  return VerListadoMult(value_, lookupTable_, nameField_, false, false, false, kind, title,
                        UsedValuesQuery());
}

std::string CFieldLinker::Choose(const std::string& title, std::int16_t kind) {
  RequireInitialized();
  std::string chosen;
  Atrapar(Label("Choose() method"), [&] { chosen = OpenPicker(title, kind); });
  return chosen;
}

bool CFieldLinker::Validate(std::string& result) {
  RequireInitialized();
  bool valid = false;
  Atrapar(Label("Validate() method"), [&] {
    const std::string title = result;
    result.clear();
    if (isEmpty_) {
      valid = true;
      return;
    }
    dao::Recordset rs = RequireBD().OpenRecordset(UsedValuesQuery(), dao::dbOpenSnapshot);
    bool picked = false;
    for (const std::string& value : values_) {
      rs.FindFirst(nameField_ + " = " + ComillaSQL(Trim(value)));
      if (rs.NoMatch()) {
        // An unknown name: the user picks the names instead; leaving the picker's text as it
        // was means the typed text still stands, which is not valid.
        result = OpenPicker(title, kDefaultPickerWidth);
        picked = true;
        valid = result != value_;
        break;
      }
      result = FormatValue(CStr(rs.Fields(nameField_).Value()), result);
    }
    rs.Close();
    // Found names keep the text as the user typed it (the caller compares it with the
    // previous one); only a different pick replaces it.
    if (!picked)
      valid = true;
    else if (valid)
      setValue(result);
  });
  return valid;
}

std::string CFieldLinker::FormatValue(const std::string& value,
                                      const std::string& accumulated) const {
  return accumulated + (accumulated.empty() ? "" : " ") + value + separator_;
}

}  // namespace cp
