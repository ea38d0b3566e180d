#pragma once
// The selection window's running count of the records that the current criteria select.
//
// LiveCountQuery builds, on the dialog's thread, the query that accepting would lead the host
// to run (EntityQuery over the same condition); it shows no message and writes no log while
// doing so. A CountWorker counts the rows of such queries (SELECT COUNT(*) around them) on a
// thread of its own, over its own connection to the same database (a connection is never
// shared between threads), and stops the query running when a newer one comes. Nothing here
// needs a display: a view delivers the results to its own thread.
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "common/entity_catalogue.h"

namespace cp {

class frmSeleccion;
namespace dao {
class Engine;
}

struct CountQuery {
  std::string connection;  // the database to open: the name the host's database was opened by
  std::string sql;         // the host's query, in Jet SQL
  const EntityInfo* entity = nullptr;  // whose noun the count takes
};

// The count for the dialog's current entity and criteria, or nullopt when none can be given:
// no criteria control serves the entity, no database was set, or building the condition
// raised or asked the user something.
std::optional<CountQuery> LiveCountQuery(frmSeleccion& dialog);

class CountWorker {
 public:
  // A count, or nullopt when its query could not be run.
  using Result = std::optional<std::int64_t>;
  // Receives a result on the worker's thread, with the ticket Submit gave its query.
  using Delivery = std::function<void(std::uint64_t ticket, Result result)>;

  explicit CountWorker(Delivery deliver);
  // Stops the query running and waits for the thread.
  ~CountWorker();
  CountWorker(const CountWorker&) = delete;
  CountWorker& operator=(const CountWorker&) = delete;

  // Puts query in place of any waiting one and interrupts the one running; returns the
  // ticket of its result. Only the newest ticket's result is delivered: a query overtaken
  // before or while it runs delivers nothing. (On a server, a query overtaken in the instant
  // before it reaches the server runs to its end, and is then dropped.)
  std::uint64_t Submit(CountQuery query);
  // Drops the waiting query and interrupts the one running, delivering nothing for either.
  void Cancel();

  // How many workers the process has now (each has one thread).
  static int Alive();

 private:
  void Run(std::stop_token stop);
  // Runs query unless a newer ticket than ticket was given meanwhile.
  Result Count(const CountQuery& query, std::uint64_t ticket, const std::stop_token& stop);
  void InterruptLocked();

  Delivery deliver_;
  std::mutex mutex_;
  std::condition_variable_any wake_;
  std::optional<CountQuery> waiting_;
  std::uint64_t latest_ = 0;  // the newest ticket given
  bool running_ = false;      // a query runs on engine_
  std::shared_ptr<dao::Engine> engine_;  // the worker's own connection, kept between counts
  std::jthread thread_;       // last: starts once everything above exists
};

}  // namespace cp
