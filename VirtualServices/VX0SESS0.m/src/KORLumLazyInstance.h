// Storage for a module-level instance that is built on first use and
// destroyed when the library is unloaded, only if it was built (internal to
// VX0SESS0).
//
// The holder itself is constant-initialised (no code runs for it at load);
// its destructor is registered when its source unit is initialised, so the
// instance is destroyed in the reverse order of the units' initialisation.
//
// The instance counts as built once its constructor has returned: when the
// constructor throws, the holder stays empty, destroys nothing, and a later
// Create may try again.
#ifndef KORLumLazyInstance_h
#define KORLumLazyInstance_h

#include <optional>
#include <utility>

template <typename T>
class KORLumLazyInstance {
 public:
  constexpr KORLumLazyInstance() noexcept = default;
  ~KORLumLazyInstance() = default;
  KORLumLazyInstance(const KORLumLazyInstance&) = delete;
  KORLumLazyInstance& operator=(const KORLumLazyInstance&) = delete;

  [[nodiscard]] bool IsCreated() const noexcept { return _instance.has_value(); }

  // Builds the instance from the arguments (only while none is created).
  template <typename... Arguments>
  T& Create(Arguments&&... iArguments) {
    return _instance.emplace(std::forward<Arguments>(iArguments)...);
  }

  // The instance (only once created).
  T& Get() noexcept { return *_instance; }

 private:
  std::optional<T> _instance;
};

#endif
