#pragma once
// A demo database made for one benchmark run in the temporary folder, removed when the run ends.
#include <filesystem>
#include <string>
#include <unistd.h>

#include "sample/sample_database.h"

class DemoFile {
 public:
  // properties: own properties of the demo data (the other tables follow from it).
  DemoFile(const std::string& name, int properties) {
    path_ = (std::filesystem::temp_directory_path() /
             (name + "_" + std::to_string(::getpid()) + ".db"))
                .string();
    std::filesystem::remove(path_);
    cp::sample::CreateSampleDatabase(path_, cp::sample::DemoOptions{properties});
  }
  ~DemoFile() { std::filesystem::remove(path_); }
  DemoFile(const DemoFile&) = delete;
  DemoFile& operator=(const DemoFile&) = delete;
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};
