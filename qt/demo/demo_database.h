#pragma once
// The database the demo host opens when none is named: the demo database beside the build
// output, created with sample data the first time.
#include <iosfwd>
#include <string>

namespace cp {

// build/demo.db of the build that made this program; once installed elsewhere (that folder
// gone), demo.db in the user's cache folder (~/.cache/criteriopredios-demo/).
std::string DefaultDemoDatabase();

// Makes sure path holds a database: when no file is there, creates it with the demo data
// (2000 properties); a PostgreSQL connection text is
// taken as it is. True when the file exists afterwards; false after a failed
// creation, whose reason was written to err.
bool EnsureDemoDatabase(const std::string& path, std::ostream& out, std::ostream& err);

}  // namespace cp
