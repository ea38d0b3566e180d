#pragma once
// CFieldLinker: ties a text criterion typed as names ("Madrid;Sevilla") to the numeric ids
// of a lookup table. It splits the text at a separator, resolves each name to its id, builds
// the condition on the id field, checks the typed names against the names the main table
// actually uses, and opens the list picker to choose names. Its errors and trap labels are
// English, unlike the rest of the component.
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/core/variant.h"

namespace cp {

class CFieldLinker {
 public:
  // The id of a name that the lookup table does not hold (also the id right after Init).
  static constexpr std::int32_t kNotFound = -2;
  // The id asked for without an index while the text holds several names.
  static constexpr std::int32_t kAmbiguous = -1;
  // Width handed to the list picker when Choose is given none.
  static constexpr std::int16_t kDefaultPickerWidth = 3000;

  // Binds the linker: mainTable references lookupTable by idField; nameField is the name
  // column of lookupTable; separator is the one character between names. The trailing three
  // are converted to text, a missing (Empty) one becoming "". Resets Value and PreviousValue
  // to "", MoreValues false, IsEmpty true, the cached id to -2. A second call raises 20000
  // (source "CFieldLinker"); a failed conversion is reported and leaves it unbound.
  void Init(const std::string& mainTable, const std::string& lookupTable,
            const Variant& idField = {}, const Variant& nameField = {},
            const Variant& separator = {});

  // Every member below but FormatValue raises 20001 (source "CFieldLinker") before Init.

  // The text as typed. Setting it splits it into names: blanks around the text and one
  // trailing separator are ignored; empty names between separators are kept.
  const std::string& Value() const;
  void setValue(const std::string& value);
  // A copy that the caller keeps (the text the box held when last validated).
  const std::string& PreviousValue() const;
  void setPreviousValue(const std::string& value);
  // Extra WHERE text (without WHERE) for the names offered by Choose and Validate.
  const std::string& Filter() const;
  void setFilter(const std::string& filter);
  // The text holds two or more names / no name at all.
  bool MoreValues() const;
  bool IsEmpty() const;
  // One less than the number of names (-1 for an empty text): callers count 0..ValuesCount.
  int ValuesCount() const;

  // The id of name number index (trimmed), looked up in the lookup table; kNotFound when the
  // table has no such name. Without an index: kAmbiguous (no query) while the text holds
  // several names, else the first name's id. A failure (an index past the names, a database
  // error) is reported and gives 0.
  std::int32_t ID(std::optional<int> index = std::nullopt);

  // "(idField=id)" for one name, "((idField=id1) OR (idField=id2))" for several, "" for an
  // empty text. Unknown names compare with -2, which matches nothing.
  std::string GenerarCondicionSQL();

  // Opens the list picker on the names in use (narrowed by Filter), with Value as the names
  // already chosen, and returns the picker's answer (Value itself when the user cancels).
  // A failure is reported and gives "".
  std::string Choose(const std::string& title = {}, std::int16_t kind = kDefaultPickerWidth);

  // Checks every name against the names in use (narrowed by Filter). On entry result holds
  // the title for the picker; on return the canonical text: each name in the database's
  // spelling, as FormatValue lists them ("Madrid; Sevilla;"), or "" for an empty text.
  // A name not in use opens the picker; its answer becomes result and the walk stops.
  // Returns true when every name was found (Value stays as typed), or when the picker's
  // answer differs from Value (Value becomes that answer). Returns false when the user left
  // the picker's text as it was, or on a failure (reported; result keeps what it held then).
  bool Validate(std::string& result);

  // accumulated + (" " when accumulated is not empty) + value + separator. Needs no Init.
  std::string FormatValue(const std::string& value, const std::string& accumulated) const;

  // The statement of the names in use that Choose and Validate offer.
  std::string UsedValuesQuery() const;
  // The statement with which ID looks one (trimmed) name up; name is quoted here.
  std::string NameLookupQuery(const std::string& name) const;

 private:
  void RequireInitialized() const;
  std::string OpenPicker(const std::string& title, std::int16_t kind);

  bool initialized_ = false;
  std::string value_;
  std::string previousValue_;
  std::int32_t cachedId_ = kNotFound;
  bool moreValues_ = false;
  bool isEmpty_ = true;
  std::vector<std::string> values_;
  std::string filter_;
  std::string mainTable_;
  std::string lookupTable_;
  std::string idField_;
  std::string nameField_;
  std::string separator_;
};

}  // namespace cp
