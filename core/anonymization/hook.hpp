// A place where the application may put a function of its own.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <utility>

namespace core::anonymization {

// Empty until a function is set. May be used from any thread; a function that is
// exchanged lives on until the calls that are under way have ended.
template <class Signature>
class Hook {
 public:
  using Function = std::function<Signature>;

  // An empty function empties the hook.
  void set(Function function) {
    auto next = function ? std::make_shared<const Function>(std::move(function)) : nullptr;
    const std::lock_guard lock(mutex_);
    function_.swap(next);
  }

  // nullptr if the hook is empty. To be called without any lock held: the
  // function may take long and ask us things.
  std::shared_ptr<const Function> get() const {
    const std::lock_guard lock(mutex_);
    return function_;
  }

 private:
  mutable std::mutex mutex_;
  std::shared_ptr<const Function> function_;
};

}  // namespace core::anonymization
