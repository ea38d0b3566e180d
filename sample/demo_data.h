#pragma once
// Realistic Spanish sample data for an agency file: places, lookup lists, users, contacts
// with phones and e-mails, properties of every kind and demands. Fully determined by the
// seed and the size, so every machine produces the same rows.
#include <cstdint>

#include "sample/row_sink.h"

namespace cp::sample {

inline constexpr std::uint64_t kDemoSeed = 0x43726974657269ull;  // fixed: "Criteri"

// Row counts for a given number of own properties, in the proportions of a real agency
// file (600 own : 150 other agencies' : 150 archived : 150 sold : 300 demands : 300 clients).
struct DemoSizes {
  int own_properties = 0;
  int other_agency_properties = 0;
  int archived_properties = 0;
  int sold_properties = 0;
  int demands = 0;
  int clients = 0;
  int agencies = 0;        // plus the agency with id 1000000 that stands for private sellers
  int other_contacts = 0;  // each of lawyers, opposing clients, procurators, archived opposing
};

// Sizes for `properties` own properties (0 or more).
DemoSizes SizesFor(int properties);

struct DemoOptions {
  int properties = 2000;
  std::uint64_t seed = kDemoSeed;
};

// Writes every table's rows into sink: lookup tables first, then users, contacts and their
// phones and e-mails, properties and demands. Keys are written explicitly and every id
// column refers to a row written before it. Throws what the sink throws; raises error 5 for
// a negative size.
void GenerateDemoData(RowSink& sink, const DemoOptions& options);

}  // namespace cp::sample
