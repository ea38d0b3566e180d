#pragma once
// Event<Args...>: the list of handlers of one control event. Handlers run synchronously, in
// the order they were connected, as the runtime runs an event procedure; arguments declared
// as references (Validate's cancel, KeyDown's key code) let a handler answer the sender.
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "platform/core/error.h"

namespace cp::form {

// A handler that keeps raising the event it handles (a Change handler that sets Text to a
// new value each time) ends with err::kOutOfStackSpace instead of exhausting the stack.
inline constexpr int kMaxEventNesting = 64;

template <class... Args>
class Event {
 public:
  using Handler = std::function<void(Args...)>;

  // Adds a handler; returns its id for Disconnect.
  int Connect(Handler handler) {
    handlers_.push_back(std::make_shared<Entry>(Entry{nextId_, std::move(handler), true}));
    return nextId_++;
  }
  // Removes a handler; unknown ids are ignored. Safe from inside a handler: a handler removed
  // while the event is firing does not run any more, not even in that firing.
  void Disconnect(int id) {
    std::erase_if(handlers_, [id](const std::shared_ptr<Entry>& e) {
      if (e->id != id) return false;
      e->connected = false;
      return true;
    });
  }
  bool HasHandlers() const { return !handlers_.empty(); }

  // Runs every handler connected when the event fires (handlers connected meanwhile wait for
  // the next firing). A handler's error stops the remaining ones and reaches the sender.
  void Fire(Args... args) {
    if (depth_ >= kMaxEventNesting) {
      Raise(err::kOutOfStackSpace, "Espacio de pila insuficiente", "CriterioPredios");
    }
    struct Depth {
      int& d;
      explicit Depth(int& v) : d(v) { ++d; }
      ~Depth() { --d; }
    } guard(depth_);
    const std::vector<std::shared_ptr<Entry>> snapshot = handlers_;
    for (const auto& e : snapshot) {
      if (e->connected) e->handler(args...);
    }
  }

 private:
  struct Entry {
    int id;
    Handler handler;
    bool connected;
  };
  std::vector<std::shared_ptr<Entry>> handlers_;
  int nextId_ = 1;
  int depth_ = 0;
};

}  // namespace cp::form
