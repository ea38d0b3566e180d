#pragma once
// Reads a zip archive back for the tests: every member's name and content.
#include <zip.h>

#include <map>
#include <string>

namespace cp::testing {

// The members of the archive at path; empty when it cannot be opened.
inline std::map<std::string, std::string> ZipEntries(const std::string& path) {
  std::map<std::string, std::string> entries;
  int error = 0;
  zip_t* archive = zip_open(path.c_str(), ZIP_RDONLY | ZIP_CHECKCONS, &error);
  if (!archive) return entries;
  for (zip_int64_t i = 0; i < zip_get_num_entries(archive, 0); ++i) {
    zip_stat_t st;
    if (zip_stat_index(archive, i, 0, &st) != 0) continue;
    std::string content(st.size, '\0');
    if (zip_file_t* file = zip_fopen_index(archive, i, 0)) {
      const zip_int64_t n = zip_fread(file, content.data(), st.size);
      content.resize(n < 0 ? 0 : static_cast<std::size_t>(n));
      zip_fclose(file);
    }
    entries[st.name] = std::move(content);
  }
  zip_close(archive);
  return entries;
}

}  // namespace cp::testing
