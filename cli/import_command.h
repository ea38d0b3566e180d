#pragma once
// import: brings an office's Access file (.mdb) into a new agency database (SQLite file or
// server database), all or nothing, and optionally checks the copy against the file.
#include <iosfwd>
#include <string>

#include "sample/access_import.h"

namespace cp::cli {

struct ImportOptions {
  std::string mdb;
  std::string db;
  bool replace = false;  // replace an existing target
  bool check = false;    // compare rows and checksums with the file afterwards
};

// Prints the summary (rows per table, tables and columns the schema does not know, schema
// tables the file lacks) and, with check, one line per table and the verdict. Exit 2 with a
// Spanish message on err for a bad file, an existing target, a failed import (nothing is
// left behind) or a check that finds a difference.
int Import(const ImportOptions& options, std::ostream& out, std::ostream& err,
           const sample::ImportProgress& progress = {});

// A bar per table on err (rows done, rows per second), redrawn a few times a second; each
// table's bar ends with a newline.
sample::ImportProgress ImportProgressBar(std::ostream& err);

}  // namespace cp::cli
