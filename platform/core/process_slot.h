#pragma once
// ProcessSlot: one process-wide value that the host installs and tests replace (the database,
// the messenger, the modal runner...). One component runs on the host's UI thread, so a slot
// is a plain value without locking; Scoped is the only safe way to replace it for a while.
#include <utility>

namespace cp {

template <class T>
class ProcessSlot {
 public:
  explicit ProcessSlot(T initial = T{}) : value_(std::move(initial)) {}
  ProcessSlot(const ProcessSlot&) = delete;
  ProcessSlot& operator=(const ProcessSlot&) = delete;

  // The value now installed.
  const T& Get() const { return value_; }
  // Installs value and returns the one it replaces.
  T Set(T value) {
    std::swap(value_, value);
    return value;
  }

  // Installs a value for its lifetime and puts the replaced one back on every exit,
  // exceptions included.
  class Scoped {
   public:
    Scoped(ProcessSlot& slot, T value) : slot_(slot), previous_(slot.Set(std::move(value))) {}
    ~Scoped() { slot_.Set(std::move(previous_)); }
    Scoped(const Scoped&) = delete;
    Scoped& operator=(const Scoped&) = delete;

   private:
    ProcessSlot& slot_;
    T previous_;
  };

 private:
  T value_;
};

}  // namespace cp
