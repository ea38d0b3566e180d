#include "common/mail_client.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <optional>
#include <thread>
#include <vector>

extern char** environ;

namespace cp {
namespace {

// Waits for the child at most `wait`. nullopt while it still runs; otherwise its status
// (-1 when it could not be waited for).
std::optional<int> WaitFor(pid_t pid, std::chrono::milliseconds wait) {
  const auto deadline = std::chrono::steady_clock::now() + wait;
  for (;;) {
    int status = 0;
    const pid_t done = ::waitpid(pid, &status, WNOHANG);
    if (done == pid) return status;
    if (done < 0 && errno != EINTR) return -1;
    if (std::chrono::steady_clock::now() >= deadline) return std::nullopt;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
}

}  // namespace

std::string FindOnPath(const std::string& name) {
  const char* path = std::getenv("PATH");
  if (!path) return {};
  const std::string folders = path;
  std::size_t start = 0;
  while (start <= folders.size()) {
    std::size_t end = folders.find(':', start);
    if (end == std::string::npos) end = folders.size();
    // An empty entry is the current folder, as the shell reads PATH.
    std::string folder = folders.substr(start, end - start);
    if (folder.empty()) folder = ".";
    const std::string candidate = folder + "/" + name;
    struct stat st {};
    if (::stat(candidate.c_str(), &st) == 0 && S_ISREG(st.st_mode) &&
        ::access(candidate.c_str(), X_OK) == 0) {
      return candidate;
    }
    start = end + 1;
  }
  return {};
}

bool XdgEmailClient::Compose(const MailMessage& message) {
  const std::string tool = FindOnPath("xdg-email");
  if (tool.empty()) return false;
  std::vector<std::string> args = {tool, "--subject", message.subject, "--body", message.body};
  if (!message.attachment.empty()) {
    args.push_back("--attach");
    args.push_back(message.attachment);
  }
  args.push_back(message.address);
  std::vector<char*> argv;
  for (auto& arg : args) argv.push_back(arg.data());
  argv.push_back(nullptr);

  posix_spawn_file_actions_t actions;
  if (posix_spawn_file_actions_init(&actions) != 0) return false;
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  pid_t pid = 0;
  const int started = posix_spawn(&pid, tool.c_str(), &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (started != 0) return false;

  const std::optional<int> status = WaitFor(pid, wait_);
  if (!status) {
    // Still running: the mail client holds it while the message is open.
    std::thread([pid] {
      int ignored = 0;
      while (::waitpid(pid, &ignored, 0) < 0 && errno == EINTR) {
      }
    }).detach();
    return true;
  }
  return *status != -1 && WIFEXITED(*status) && WEXITSTATUS(*status) == 0;
}

ProcessSlot<std::shared_ptr<MailClient>>& MailClientSlot() {
  static ProcessSlot<std::shared_ptr<MailClient>> slot;
  return slot;
}

std::shared_ptr<MailClient> CurrentMailClient() {
  if (auto client = MailClientSlot().Get()) return client;
  static const auto fallback = std::make_shared<XdgEmailClient>();
  return fallback;
}

std::shared_ptr<MailClient> SetMailClient(std::shared_ptr<MailClient> client) {
  return MailClientSlot().Set(std::move(client));
}

}  // namespace cp
