#include "KORILumServices.h"

#include <string>

#include "KORGetEnv.h"
#include "KORResourceFile.h"

namespace {

// The services read from the administrator settings file.
class KORLumAdminSettings final : public KORILumServices {
 public:
  explicit KORLumAdminSettings(KORResourceFile iSettings) : _settings(std::move(iSettings)) {}

  int GetAdminVariable(KORUnicodeString& oValue, const KORUnicodeString& iVariable,
                       const KORUnicodeString& iAdministrator) override {
    if (const KORUnicodeString* value =
            _settings.Find(GetAdminSettingKey(iVariable, iAdministrator).View())) {
      oValue = *value;
      return 0;
    }
    oValue.Reset();
    return 1;
  }

 private:
  ~KORLumAdminSettings() override = default;

  KORResourceFile _settings;
};

}  // namespace

KORBaseUnknown::~KORBaseUnknown() = default;

void KORBaseUnknown::AddRef() const noexcept {
  _references.fetch_add(1, std::memory_order_relaxed);
}

void KORBaseUnknown::Release() const noexcept {
  if (_references.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
}

KORILumServices::~KORILumServices() = default;

KORUnicodeString GetAdminSettingKey(const KORUnicodeString& iVariable,
                                    const KORUnicodeString& iAdministrator) {
  std::string key(iAdministrator.View());
  key += '.';
  key.append(iVariable.View());
  return KORUnicodeString(key.data(), key.size());
}

KORResourceFile GetAdminSettingsFile() {
  // Load(nullptr) is an absent file without name.
  return KORResourceFile::Load(KORGetEnv("KOR_ADMIN_SETTINGS"));
}

KORILumServices_var CreateServices() {
  if (KORGetEnv("KOR_ADMIN_SETTINGS") == nullptr) return KORILumServices_var();
  KORResourceFile settings = GetAdminSettingsFile();
  if (settings.GetState() != KORResourceFile::Loaded) return KORILumServices_var();
  return KORILumServices_var(new KORLumAdminSettings(std::move(settings)));
}
