#pragma once
// Spreads one job over forked worker processes. The component keeps process-wide slots
// (database, messenger, list picker), so its work cannot be shared by threads of one process;
// each worker is a child with slots of its own that sends what it finds over a pipe.
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

namespace cp::cli {

// A worker's end of its pipe to the parent.
class WorkerPipe {
 public:
  explicit WorkerPipe(int fd) : fd_(fd) {}
  // One record, handed to the parent's on_record as is.
  void Send(std::string_view record);
  // Text the parent writes to its log stream (what the worker's messenger shows).
  void Log(std::string_view text);
  // Why the worker gives up; sent by RunWorkers when the job fails.
  void Fail(std::string_view description);

 private:
  void Write(char kind, std::string_view body);
  int fd_;
};

// A worker's part: returns the empty text when done, else the description of what failed.
using WorkerJob = std::function<std::string(int worker, WorkerPipe& pipe)>;

// Forks `workers` children after flushing standard output and error; child w runs job(w, pipe)
// and ends with _exit, so neither its destructors, the atexit handlers nor the parent's stdio
// buffers run there: the job closes what it opens itself. The caller must hold no open
// database connection, since a connection must never be used on both sides of a fork.
// The parent calls on_record for every record as it arrives (each worker's in the order it
// sent them, workers interleaved) and writes logged text to log. Returns the empty text when
// every worker ended well, else the first failure: a job's description, an exception that
// escaped a job, or how a worker died. However it returns, an exception from on_record
// included, no worker is left running.
std::string RunWorkers(int workers, const WorkerJob& job,
                       const std::function<void(std::string_view record)>& on_record,
                       std::ostream& log);

}  // namespace cp::cli
