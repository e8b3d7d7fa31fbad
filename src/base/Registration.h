// Callbacks that end with whoever gave them.
#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace tvx {

// Keeps a callback registered for as long as it lives. Ending it, or assigning another one, takes the
// callback back: it is not called any more. It may outlive what the callback was given to.
class [[nodiscard]] Registration {
 public:
  Registration() = default;
  explicit Registration(std::shared_ptr<const void> callback) : callback_(std::move(callback)) {}
  Registration(Registration&&) = default;
  Registration& operator=(Registration&&) = default;
  Registration(const Registration&) = delete;
  Registration& operator=(const Registration&) = delete;

  void End() { callback_.reset(); }

 private:
  std::shared_ptr<const void> callback_;
};

// A place for one callback, kept by whoever calls. The callback itself belongs to the Registration: whoever
// gives one keeps that, as a member, and cannot be called once it is gone. A callback may end its own
// Registration, or give another one, while it runs.
template <typename... Arguments>
class Callback {
 public:
  using Function = std::function<void(Arguments...)>;

  Callback() = default;
  Callback(const Callback&) = delete;
  Callback& operator=(const Callback&) = delete;

  // Replaces the callback that was given before, whose Registration has no effect from then on.
  Registration Give(Function function) {
    auto owned = std::make_shared<const Function>(std::move(function));
    function_ = owned;
    return Registration(std::move(owned));
  }
  // Calls it; does nothing where there is none.
  void operator()(Arguments... arguments) const {
    if (const auto function = function_.lock()) (*function)(arguments...);
  }
  explicit operator bool() const { return !function_.expired(); }

 private:
  std::weak_ptr<const Function> function_;
};

}  // namespace tvx
