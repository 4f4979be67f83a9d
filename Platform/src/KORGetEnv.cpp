#include "KORGetEnv.h"

#include <cstdlib>

const char* KORGetEnv(const char* iName) {
  if (iName == nullptr) return nullptr;
  return std::getenv(iName);
}
