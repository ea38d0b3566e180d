#pragma once
// Hostile text: random user text in every text box of both criteria controls and in saved
// selections, and the checks that none of it becomes SQL.
//
// A case is an entity, optionally a saved selection handed over by the host, the list rows
// chosen in cboEn and cboOpPalabras, some check boxes, and texts typed into a random subset of
// the control's text boxes as a user types them. It runs through the real dialog on a scratch
// agency database and must give:
//  - a condition (and host query) that our Jet parser accepts and that runs without a syntax
//    error, and no message box reporting one (or an unknown name) on the way;
//  - outside its literals, only the words and symbols the component writes and the names of
//    the database's own tables and columns;
//  - the same structure, token for token, as its twin: the same case with every ', " and |
//    typed (and stored in a twin of the database) replaced by §, ¤ and ¦, whose literals are
//    those of the case with the same replacement. A quote that closed a literal early, or a "|" that
//    left one, changes the structure; a literal not made of what was typed changes its text.
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "selection/user_entries.h"

namespace cp::hostile {

struct HostileCase {
  std::string entity;
  bool restore = false;              // hand saved over before showing the dialog
  std::vector<UserEntry> saved;      // the saved selection's rows (name, index, value)
  int searchField = -1;              // cboEn's row chosen, -1 to leave it
  int searchMode = -1;               // cboOpPalabras's row chosen, -1 to leave it
  std::vector<UserEntry> checks;     // check boxes set (value "0", "1" or "2")
  std::vector<UserEntry> typed;      // text typed into text boxes, in this order
};

// The case as C++ source (a HostileCase initializer), to paste into a table of cases.
std::string Describe(const HostileCase& c);

// Draws cases. The names of the boxes come from the controls themselves; some texts are
// names taken from the database so that look-ups also find something.
class Generator {
 public:
  // dbTexts: texts of the database to mix in (names of places, kinds, users...).
  explicit Generator(std::vector<std::string> dbTexts);
  HostileCase Next(std::mt19937_64& rng);
  // One hostile text.
  std::string Text(std::mt19937_64& rng);

 private:
  std::vector<std::string> dbTexts_;
};

// What one case gave.
struct Verdict {
  bool ok = true;
  std::string problem;    // the first property that failed
  std::string condition;  // the condition the component returned
  bool twinCompared = false;
  bool hostError = false;  // the host query raised an error other than a syntax error
};

// Runs cases on a scratch agency database it creates (and removes) in a temporary folder,
// with its twin. Installs its own messenger, list picker, clock and log folder while it runs
// a case and puts the previous ones back.
class Checker {
 public:
  Checker();
  ~Checker();
  Checker(const Checker&) = delete;
  Checker& operator=(const Checker&) = delete;

  Verdict Check(const HostileCase& c);
  // Texts of the database's small tables, for the generator.
  const std::vector<std::string>& DatabaseTexts() const;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

// The summary of a run of cases.
struct RunSummary {
  int cases = 0;
  int failures = 0;
  int twins = 0;          // cases whose twin was run and compared
  int conditions = 0;     // cases with a non-empty condition
  int hostErrors = 0;     // host queries that raised an error other than a syntax error
};

// Runs cases first .. first+count-1 drawn from seed; each failure is written to out with the seed, the case
// number, the case (Describe) and the condition, and the run stops after maxFailures.
RunSummary RunCases(std::uint64_t seed, int first, int count, std::ostream& out,
                    int maxFailures = 5);

// The case number n of a run from seed, as RunCases draws it.
HostileCase CaseOf(std::uint64_t seed, int n, Generator& generator);

}  // namespace cp::hostile
