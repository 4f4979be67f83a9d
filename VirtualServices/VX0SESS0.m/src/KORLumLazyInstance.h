// Storage for a module-level instance that is built on first use and
// destroyed when the library is unloaded, only if it was built (internal to
// VX0SESS0).
//
// The holder itself is constant-initialised (no code runs for it at load);
// its destructor is registered when its source unit is initialised, so the
// instance is destroyed in the reverse order of the units' initialisation.
#ifndef KORLumLazyInstance_h
#define KORLumLazyInstance_h

#include <new>
#include <utility>

template <typename T>
class KORLumLazyInstance {
 public:
  constexpr KORLumLazyInstance() noexcept = default;
  ~KORLumLazyInstance() {
    if (_created) Get().~T();
  }
  KORLumLazyInstance(const KORLumLazyInstance&) = delete;
  KORLumLazyInstance& operator=(const KORLumLazyInstance&) = delete;

  [[nodiscard]] bool IsCreated() const noexcept { return _created; }

  // Marks the instance created, then builds it from the arguments.
  template <typename... Arguments>
  T& Create(Arguments&&... iArguments) {
    _created = true;
    return *::new (static_cast<void*>(_storage)) T(std::forward<Arguments>(iArguments)...);
  }

  // The instance (only once created).
  T& Get() noexcept { return *std::launder(reinterpret_cast<T*>(_storage)); }

 private:
  alignas(T) unsigned char _storage[sizeof(T)]{};
  bool _created = false;
};

#endif
