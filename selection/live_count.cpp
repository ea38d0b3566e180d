#include "selection/live_count.h"

#include <atomic>

#include "common/error_handler.h"
#include "common/messenger.h"
#include "common/shared_state.h"
#include "platform/dao/connect.h"
#include "platform/dao/database.h"
#include "platform/jetsql/translator.h"
#include "selection/frm_seleccion.h"

namespace cp {
namespace {

std::atomic<int> g_alive{0};

// Stands in for the user while the count builds its condition: answers as one who declines
// and remembers that something was asked.
class UnheardMessenger : public Messenger {
 public:
  bool asked = false;
  int Show(const std::string&, int flags, const std::string&) override {
    asked = true;
    return DecliningAnswer(flags);
  }
  std::string Ask(const std::string&, const std::string&, const std::string&) override {
    asked = true;
    return {};
  }
};

}  // namespace

std::optional<CountQuery> LiveCountQuery(frmSeleccion& dialog) {
  const std::string entity = dialog.cboEntidad().Text();
  const EntityInfo* info = FindEntity(entity);
  SelectionControl* control = dialog.ControlFor(entity);
  const std::shared_ptr<dao::Database> database = BD();
  if (!info || !control || !database || !database->IsOpen()) return std::nullopt;
  auto unheard = std::make_shared<UnheardMessenger>();
  ScopedMessenger messenger(unheard);
  QuietErrors quiet;
  std::string where;
  try {
    where = control->SelecWhere();
  } catch (const std::exception&) {
    return std::nullopt;
  }
  if (quiet.Trapped() > 0 || unheard->asked) return std::nullopt;
  return CountQuery{database->Name(), EntityQuery(*info, where), info};
}

CountWorker::CountWorker(Delivery deliver)
    : deliver_(std::move(deliver)), thread_([this](std::stop_token stop) { Run(stop); }) {
  ++g_alive;
}

CountWorker::~CountWorker() {
  thread_.request_stop();
  // Count checks the ticket before it lets a query run: the newer one stops it there, or the
  // interrupt stops the query it let run.
  Cancel();
  thread_.join();
  --g_alive;
}

int CountWorker::Alive() { return g_alive; }

void CountWorker::InterruptLocked() {
  if (running_ && engine_) engine_->Interrupt();
}

std::uint64_t CountWorker::Submit(CountQuery query) {
  std::lock_guard lock(mutex_);
  waiting_ = std::move(query);
  InterruptLocked();
  wake_.notify_one();
  return ++latest_;
}

void CountWorker::Cancel() {
  std::lock_guard lock(mutex_);
  waiting_.reset();
  ++latest_;
  InterruptLocked();
}

void CountWorker::Run(std::stop_token stop) {
  std::unique_lock lock(mutex_);
  while (wake_.wait(lock, stop, [this] { return waiting_.has_value(); })) {
    const CountQuery query = std::move(*waiting_);
    waiting_.reset();
    const std::uint64_t ticket = latest_;
    lock.unlock();
    const Result result = Count(query, ticket, stop);
    lock.lock();
    if (ticket != latest_ || stop.stop_requested()) continue;
    lock.unlock();
    deliver_(ticket, result);
    lock.lock();
  }
}

CountWorker::Result CountWorker::Count(const CountQuery& query, std::uint64_t ticket,
                                       const std::stop_token& stop) {
  try {
    if (!engine_ || engine_->Name() != query.connection) {
      std::shared_ptr<dao::Engine> engine = dao::OpenEngine(query.connection);
      std::lock_guard lock(mutex_);
      engine_ = std::move(engine);
    }
    {
      // A stop given from here on reaches the query: either it is seen now, or running_ is
      // set and the stop interrupts the engine, which stays stopped until the next Resume.
      std::lock_guard lock(mutex_);
      if (ticket != latest_ || stop.stop_requested()) return std::nullopt;
      engine_->Resume();
      running_ = true;
    }
    struct Ended {
      CountWorker& worker;
      ~Ended() {
        std::lock_guard lock(worker.mutex_);
        worker.running_ = false;
      }
    } ended{*this};
    // The host's query is Jet SQL, translated as the database object does; its rows are
    // counted in the engine's own dialect, around the translation.
    const std::string translated = jetsql::TranslateStatement(
        query.sql, engine_->dialect(), engine_->TranslationOptions());
    std::unique_ptr<dao::Cursor> rows =
        engine_->Query("SELECT COUNT(*) FROM (" + translated + ") AS counted");
    if (!rows->Next()) return std::nullopt;
    const dao::Cell count = rows->Value(0);
    if (const auto* n = std::get_if<std::int64_t>(&count)) return *n;
    if (const auto* d = std::get_if<double>(&count)) return static_cast<std::int64_t>(*d);
    return std::nullopt;
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

}  // namespace cp
