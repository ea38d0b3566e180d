#include "cli/worker_pool.h"

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <exception>
#include <iostream>
#include <vector>

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/core/error.h"

namespace cp::cli {
namespace {

// A frame on the pipe: kind, body length (native order: both ends are this program), body.
constexpr char kRecord = 'r', kLog = 'l', kFail = 'f';
constexpr std::size_t kHeader = 1 + sizeof(std::uint32_t);

struct Worker {
  pid_t pid = -1;
  int fd = -1;
  std::string pending;  // bytes read that do not make a whole frame yet
};

// The parent's side of the running workers: whatever ends the run, Stop kills and reaps them.
class Workers {
 public:
  ~Workers() { Stop(); }
  std::vector<Worker>& all() { return all_; }
  void Stop() {
    for (Worker& w : all_) {
      if (w.fd >= 0) close(w.fd);
      w.fd = -1;
      if (w.pid > 0) {
        kill(w.pid, SIGKILL);
        while (waitpid(w.pid, nullptr, 0) < 0 && errno == EINTR) {
        }
      }
      w.pid = -1;
    }
  }

 private:
  std::vector<Worker> all_;
};

std::string SystemFailure(const char* what) {
  return std::string(what) + ": " + std::strerror(errno);
}

// How a worker that sent no failure of its own ended; empty when it ended well.
std::string ExitFailure(int worker, int status) {
  if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return {};
  if (WIFSIGNALED(status))
    return "El proceso de trabajo " + std::to_string(worker + 1) + " terminó por la señal " +
           std::to_string(WTERMSIG(status)) + ".";
  return "El proceso de trabajo " + std::to_string(worker + 1) + " terminó con el estado " +
         std::to_string(WEXITSTATUS(status)) + ".";
}

[[noreturn]] void RunChild(int worker, int fd, const WorkerJob& job) {
  WorkerPipe pipe(fd);
  int status = 0;
  try {
    std::string failure;
    try {
      failure = job(worker, pipe);
    } catch (const Error& e) {
      failure = e.description();
    } catch (const std::exception& e) {
      failure = e.what();
    } catch (...) {
      failure = "Error desconocido en el proceso de trabajo " + std::to_string(worker + 1) + ".";
    }
    if (!failure.empty()) {
      pipe.Fail(failure);
      status = 1;
    }
  } catch (...) {  // the pipe itself broke: the parent sees the exit status
    status = 1;
  }
  _exit(status);
}

}  // namespace

void WorkerPipe::Send(std::string_view record) { Write(kRecord, record); }
void WorkerPipe::Log(std::string_view text) { Write(kLog, text); }
void WorkerPipe::Fail(std::string_view description) { Write(kFail, description); }

void WorkerPipe::Write(char kind, std::string_view body) {
  std::string frame(kHeader, kind);
  const auto size = static_cast<std::uint32_t>(body.size());
  std::memcpy(frame.data() + 1, &size, sizeof size);
  frame.append(body);
  for (std::size_t done = 0; done < frame.size();) {
    const ssize_t n = write(fd_, frame.data() + done, frame.size() - done);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) throw std::runtime_error(SystemFailure("write"));
    done += static_cast<std::size_t>(n);
  }
}

std::string RunWorkers(int workers, const WorkerJob& job,
                       const std::function<void(std::string_view)>& on_record,
                       std::ostream& log) {
  // A child that flushed the parent's buffered output would print it twice.
  std::cout.flush();
  std::cerr.flush();
  log.flush();
  std::fflush(nullptr);
  Workers running;
  std::vector<Worker>& all = running.all();
  all.reserve(static_cast<std::size_t>(workers));
  for (int w = 0; w < workers; ++w) {
    int ends[2];
    if (pipe(ends) != 0) return SystemFailure("pipe");
    const pid_t pid = fork();
    if (pid == 0) {
      close(ends[0]);
      for (const Worker& other : all) close(other.fd);
      RunChild(w, ends[1], job);
    }
    close(ends[1]);
    if (pid < 0) {
      close(ends[0]);
      return SystemFailure("fork");
    }
    all.push_back({pid, ends[0], {}});
  }

  std::string failure;
  for (int open = workers; open > 0 && failure.empty();) {
    std::vector<pollfd> polled;
    std::vector<Worker*> owner;
    for (Worker& w : all)
      if (w.fd >= 0) {
        polled.push_back({w.fd, POLLIN, 0});
        owner.push_back(&w);
      }
    if (poll(polled.data(), polled.size(), -1) < 0) {
      if (errno == EINTR) continue;
      return SystemFailure("poll");
    }
    for (std::size_t i = 0; i < polled.size() && failure.empty(); ++i) {
      if (polled[i].revents == 0) continue;
      Worker& w = *owner[i];
      char buffer[1 << 16];
      const ssize_t got = read(w.fd, buffer, sizeof buffer);
      if (got < 0 && errno == EINTR) continue;
      if (got > 0) {
        w.pending.append(buffer, static_cast<std::size_t>(got));
        std::size_t at = 0;
        while (w.pending.size() - at >= kHeader) {
          std::uint32_t size;
          std::memcpy(&size, w.pending.data() + at + 1, sizeof size);
          if (w.pending.size() - at - kHeader < size) break;
          const std::string_view body(w.pending.data() + at + kHeader, size);
          const char kind = w.pending[at];
          at += kHeader + size;
          if (kind == kRecord)
            on_record(body);
          else if (kind == kLog)
            log << body;
          else if (kind == kFail) {
            failure = body;
            break;
          }
        }
        w.pending.erase(0, at);
        continue;
      }
      // End of the pipe (or a read error): the worker is done; see how it ended.
      close(w.fd);
      w.fd = -1;
      int status = 0;
      while (waitpid(w.pid, &status, 0) < 0 && errno == EINTR) {
      }
      w.pid = -1;
      failure = ExitFailure(static_cast<int>(&w - all.data()), status);
      --open;
    }
  }
  running.Stop();
  return failure;
}

}  // namespace cp::cli
