#include "common/program_info.h"

#ifndef CP_PROGRAM_VERSION
#define CP_PROGRAM_VERSION "0.0.0"
#endif

namespace cp {
namespace {
std::string& Title() {
  static std::string title = "CriterioPredios";
  return title;
}
std::string& Version() {
  static std::string version = CP_PROGRAM_VERSION;
  return version;
}
std::string& Address() {
  static std::string address;
  return address;
}
}  // namespace

std::string ProgramTitle() { return Title(); }
void setProgramTitle(std::string title) { Title() = std::move(title); }

std::string VersionPrograma() { return Version(); }
void setVersionPrograma(std::string version) { Version() = std::move(version); }

std::string ComponentVersion() { return CP_PROGRAM_VERSION; }

std::string SupportAddress() { return Address(); }
void setSupportAddress(std::string address) { Address() = std::move(address); }

}  // namespace cp
