// KORILumServices: the platform's services interface, and the
// reference-counted handles through which programs hold interfaces.
//
// CreateServices() gives the services configured for the process: ours read
// the administrator settings file named by KOR_ADMIN_SETTINGS, a resource
// file (see KORResourceFile.h) whose keys are <Administrator>.<VARIABLE>:
//
//   LUMAdmin.LUM_STARTUP_SESSION = YES
//
// When the variable is unset or the file cannot be read, no services are
// configured and the handle is null. The file is read at each CreateServices
// call; a tool that wants to show its malformed lines loads it with
// KORResourceFile::Load(KORGetEnv("KOR_ADMIN_SETTINGS")).GetProblems().
//
//   KORILumServices_var services = CreateServices();
//   if (services != KORBaseUnknown_var()) {
//     KORUnicodeString value;
//     if (services->GetAdminVariable(value, "LUM_STARTUP_SESSION", "LUMAdmin") == 0) {
//       // value is what the administrator set (possibly empty).
//     }
//   }
//
// Handles (KORBaseUnknown_var, KORILumServices_var) share ownership of the
// interface: the interface is deleted when its last handle goes. A
// default-constructed handle is null; handles of any interface type compare
// with == and != by the object they hold, so a null services handle equals a
// null KORBaseUnknown_var. Using -> or * on a null handle is a programming
// error: the process stops through __assert. Nothing here raises.
#ifndef KORILumServices_h
#define KORILumServices_h

#include <atomic>
#include <type_traits>

#include "KORAssert.h"
#include "KORPlatformExport.h"
#include "KORResourceFile.h"
#include "KORUnicodeString.h"

// Base of every reference-counted platform interface.
class KORPLATFORM_API KORBaseUnknown {
 public:
  KORBaseUnknown() noexcept = default;
  KORBaseUnknown(const KORBaseUnknown&) = delete;
  KORBaseUnknown& operator=(const KORBaseUnknown&) = delete;

  // Takes one more reference.
  void AddRef() const noexcept;
  // Gives up one reference; the last one deletes the object.
  void Release() const noexcept;

 protected:
  // Interfaces die through Release only.
  virtual ~KORBaseUnknown();

 private:
  mutable std::atomic<long> _references{0};
};

// A reference-counted handle on an interface T (derived from
// KORBaseUnknown). Copies share the interface.
template <typename T>
class KORInterfaceVar {
  static_assert(std::is_base_of<KORBaseUnknown, T>::value,
                "handles hold interfaces derived from KORBaseUnknown");

 public:
  // The null handle.
  KORInterfaceVar() noexcept = default;
  // Takes a reference on iInterface (which may be null).
  explicit KORInterfaceVar(T* iInterface) noexcept : _interface(iInterface) { Take(); }
  KORInterfaceVar(const KORInterfaceVar& iOther) noexcept : _interface(iOther._interface) {
    Take();
  }
  KORInterfaceVar(KORInterfaceVar&& iOther) noexcept : _interface(iOther._interface) {
    iOther._interface = nullptr;
  }
  // From a handle on a derived interface (e.g. services to KORBaseUnknown_var).
  template <typename U, typename = std::enable_if_t<std::is_convertible<U*, T*>::value>>
  // cppcheck-suppress noExplicitConstructor ; implicit upcast, like a pointer's
  KORInterfaceVar(const KORInterfaceVar<U>& iOther) noexcept  // NOLINT: implicit upcast
      : _interface(iOther.Get()) {
    Take();
  }
  KORInterfaceVar& operator=(KORInterfaceVar iOther) noexcept {
    T* previous = _interface;
    _interface = iOther._interface;
    // iOther's destructor drops the reference that this handle held.
    // cppcheck-suppress unreadVariable
    iOther._interface = previous;
    return *this;
  }
  ~KORInterfaceVar() { Drop(); }

  // The interface held, or null; the handle keeps its reference.
  [[nodiscard]] T* Get() const noexcept { return _interface; }
  T* operator->() const noexcept {
    if (_interface == nullptr) {
      __assert("handle is not null", "Platform/include/KORILumServices.h", __LINE__);
    }
    return _interface;
  }
  T& operator*() const noexcept { return *operator->(); }
  explicit operator bool() const noexcept { return _interface != nullptr; }

 private:
  void Take() const noexcept {
    if (_interface != nullptr) _interface->AddRef();
  }
  void Drop() noexcept {
    if (_interface != nullptr) _interface->Release();
    _interface = nullptr;
  }

  T* _interface = nullptr;
};

template <typename T, typename U>
bool operator==(const KORInterfaceVar<T>& iLeft, const KORInterfaceVar<U>& iRight) noexcept {
  return static_cast<const KORBaseUnknown*>(iLeft.Get()) ==
         static_cast<const KORBaseUnknown*>(iRight.Get());
}
template <typename T, typename U>
bool operator!=(const KORInterfaceVar<T>& iLeft, const KORInterfaceVar<U>& iRight) noexcept {
  return !(iLeft == iRight);
}

// The services interface.
class KORPLATFORM_API KORILumServices : public KORBaseUnknown {
 public:
  // Sets oValue to the value that the administrator iAdministrator set for
  // the variable iVariable and returns 0 (also when that value is empty);
  // when it is not set, sets oValue empty and returns non-zero.
  virtual int GetAdminVariable(KORUnicodeString& oValue, const KORUnicodeString& iVariable,
                               const KORUnicodeString& iAdministrator) = 0;

 protected:
  ~KORILumServices() override;
};

using KORBaseUnknown_var = KORInterfaceVar<KORBaseUnknown>;
using KORILumServices_var = KORInterfaceVar<KORILumServices>;

// The services configured for the process, or the null handle when none are
// (KOR_ADMIN_SETTINGS unset, or its file cannot be read).
KORPLATFORM_API KORILumServices_var CreateServices();

// --- Diagnostics (for the tools that check a configuration) ---------------

// The key under which the settings file declares the variable iVariable of
// the administrator iAdministrator: "<Administrator>.<VARIABLE>".
KORPLATFORM_API KORUnicodeString GetAdminSettingKey(const KORUnicodeString& iVariable,
                                                    const KORUnicodeString& iAdministrator);
// The settings file that CreateServices reads now, parsed: absent (without
// name) when KOR_ADMIN_SETTINGS is unset.
KORPLATFORM_API KORResourceFile GetAdminSettingsFile();

#endif
