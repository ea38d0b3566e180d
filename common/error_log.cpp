#include "common/error_log.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include <fmt/format.h>

#include "common/host_forms.h"
#include "common/messages.h"
#include "common/messenger.h"
#include "platform/core/clock.h"

namespace cp {
namespace {

std::string& SharedLogFolder() {
  static std::string folder;
  return folder;
}

// Owns an open file descriptor.
class FileDescriptor {
 public:
  explicit FileDescriptor(int fd) : fd_(fd) {}
  ~FileDescriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  int get() const { return fd_; }
  bool valid() const { return fd_ >= 0; }
  // Closes now; false when close reports that data may not have reached the file.
  bool Close() {
    const int fd = fd_;
    fd_ = -1;
    return ::close(fd) == 0 || errno == EINTR;
  }

 private:
  int fd_;
};

std::string FormatEntry(const std::string& label, long number, const std::string& description) {
  const DateParts now = SplitDate(Now());
  std::string entry = fmt::format("{:02}/{:02}/{:02} {:02}:{:02}:{:02} ", now.day, now.month,
                                  now.year % 100, now.hour, now.minute, now.second);
  entry += label + " [" + std::to_string(number) + "] " + description;
  const auto forms = CurrentHostForms();
  if (forms) {
    if (auto active = forms->ActiveForm()) {
      entry += " (" + *active + ")";
      if (auto control = forms->ActiveControl()) entry += "->(" + *control + ")";
    }
  }
  entry += "\n    Formularios: ";
  if (forms) {
    for (const auto& form : forms->OpenForms()) entry += "{" + form + "} ";
  }
  entry += "\n";
  return entry;
}

bool LockExclusive(int fd) {
  while (::flock(fd, LOCK_EX) != 0) {
    if (errno != EINTR) return false;
  }
  return true;
}

bool WriteAll(int fd, const std::string& data) {
  std::size_t done = 0;
  while (done < data.size()) {
    const ssize_t n = ::write(fd, data.data() + done, data.size() - done);
    if (n < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    done += static_cast<std::size_t>(n);
  }
  return true;
}

}  // namespace

const std::string& ErrLogPath() { return SharedLogFolder(); }
void setErrLogPath(std::string folder) { SharedLogFolder() = std::move(folder); }

std::string rutaCarpetaTemporal() {
  const char* tmp = std::getenv("TMPDIR");
  std::string folder = (tmp && *tmp) ? tmp : "/tmp";
  while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
  if (folder != "/") folder += "/";
  folder += "Norvak";
  struct stat st {};
  if (::stat(folder.c_str(), &st) != 0) ::mkdir(folder.c_str(), 0777);
  return folder + "/";
}

std::string ErrorLogFile(const std::string& path) {
  return path.empty() ? rutaCarpetaTemporal() + kErrorLogName : path;
}

std::string HandlerLogPath() {
  std::string folder = ErrLogPath();
  if (folder.empty()) return {};
  if (folder.back() != '/') folder += '/';
  return folder + kErrorLogName;
}

bool AppendErrorLog(const std::string& label, long number, const std::string& description,
                    const std::string& path) {
  const std::string file = ErrorLogFile(path);
  const std::string entry = FormatEntry(label, number, description);

  FileDescriptor fd(::open(file.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666));
  if (!fd.valid()) {
    MostrarMensaje("Error al crear " + file, msg::kCritical);
    return false;
  }
  // Without the lock (a file system that does not support it) a single O_APPEND write
  // still lands whole on a local file, so the entry is written anyway.
  LockExclusive(fd.get());
  // Closing releases the lock.
  if (!WriteAll(fd.get(), entry) || !fd.Close()) {
    MostrarMensaje("Error al escribir en " + file, msg::kCritical);
    return false;
  }
  return true;
}

}  // namespace cp
