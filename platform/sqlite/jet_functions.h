#pragma once
// The SQL functions and the collation that give SQL translated from Jet its Jet meaning on
// a SQLite connection (see platform/jetsql/sqlite_rules.h for the SQL that uses them):
//   JET_NOCASE            collation: case folded (accented capitals too, 'ÁVILA' = 'ávila'),
//                         accents kept for equality but ignored first when ordering, so
//                         'ávila' sorts between 'avila' and 'b'
//   jet_like(P, X[, E])   X LIKE P with Jet's wildcards * ? # [abc] [a-z] [!abc] ([] matches
//                         nothing); % and _ are plain characters; folded as JET_NOCASE;
//                         E, if given, makes the next pattern character plain. Null if P or
//                         X is Null; an unclosed "[" is an error
//   jet_date(X)           a stored date in the form of a translated literal: ISO text
//                         "yyyy-mm-dd" at midnight, "yyyy-mm-dd hh:mm:ss" otherwise; accepts
//                         ISO text (with a midnight time, or "T"), "dd/mm/yyyy" and Jet
//                         serial numbers; other values come back unchanged
//   jet_add(A, B)         Jet's +: Null if either is Null; numbers and numeric text add;
//                         two texts join; text that is not a number plus a number is an error
//   jet_concat(A, ...)    Jet's &: Null parts count as "", Null only if every part is Null;
//                         numbers written as the runtime's CStr writes them ("2,5")
//   jet_chr(N)            Jet's chr on the Windows-1252 code page; N outside 0..255 is an error
// They exist only on connections that registered them: the database file itself never
// depends on them. The comparison itself is in text_folding.h, the pattern in like_pattern.h.
struct sqlite3;

namespace cp::sqlite {

// Registers the collation and functions on the connection; the connection keeps them until
// it closes. Raises cp::Error when SQLite refuses a registration (out of memory).
void RegisterJetFunctions(sqlite3* db);

}  // namespace cp::sqlite
