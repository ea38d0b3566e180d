// Every test program takes the locale of its environment, as a desktop program does (Qt's
// QApplication calls setlocale the same way), so that a run under a Spanish locale tests
// what a Spanish desktop does to number parsing and formatting.
#include <clocale>

namespace {

[[maybe_unused]] const bool kAdopted = std::setlocale(LC_ALL, "") != nullptr;

}  // namespace
