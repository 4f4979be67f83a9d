// KORLumLazyInstance: the storage of the module's file paths, built on first
// use and destroyed with the library only if it was built.
#include "KORLumLazyInstance.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <utility>
#include <vector>

namespace {

// Records its construction and destruction in a log that outlives it.
class Recorded {
 public:
  Recorded(std::vector<std::string>& ioLog, std::string iName)
      : _log(ioLog), _name(std::move(iName)) {
    _log.push_back("built " + _name);
  }
  ~Recorded() { _log.push_back("destroyed " + _name); }
  Recorded(const Recorded&) = delete;
  Recorded& operator=(const Recorded&) = delete;

  [[nodiscard]] const std::string& Name() const { return _name; }

 private:
  std::vector<std::string>& _log;
  std::string _name;
};

using Log = std::vector<std::string>;

// Fails to build when asked to, as a constructor does when memory runs out;
// its destructor writes to a log of its own, so that destroying an instance
// that was never built would show.
Log gFailingLog;
class FailingToBuild {
 public:
  explicit FailingToBuild(bool iFail) {
    if (iFail) throw std::bad_alloc();
    gFailingLog.emplace_back("built");
  }
  ~FailingToBuild() { gFailingLog.emplace_back("destroyed"); }
  FailingToBuild(const FailingToBuild&) = delete;
  FailingToBuild& operator=(const FailingToBuild&) = delete;
};

// A holder at namespace scope, as the library's are: the build fails if it
// would need code to run at load.
#if defined(__clang__)
[[clang::require_constant_initialization]]
#elif defined(__GNUC__)
__constinit
#endif
KORLumLazyInstance<std::string>
    gHolderAtNamespaceScope;

}  // namespace

TEST(KORLumLazyInstance, IsNotCreatedAtFirst) {
  const KORLumLazyInstance<Recorded> holder;
  EXPECT_FALSE(holder.IsCreated());
}

TEST(KORLumLazyInstance, HolderNeverCreatedDestroysNothing) {
  Log log;
  { KORLumLazyInstance<Recorded> holder; }
  EXPECT_EQ(log, Log{});
}

TEST(KORLumLazyInstance, CreateBuildsTheInstanceFromTheArguments) {
  Log log;
  KORLumLazyInstance<Recorded> holder;
  Recorded& instance = holder.Create(log, "path");
  EXPECT_TRUE(holder.IsCreated());
  EXPECT_EQ(&instance, &holder.Get());
  EXPECT_EQ(holder.Get().Name(), "path");
  EXPECT_EQ(log, Log{"built path"});
}

TEST(KORLumLazyInstance, CreatedInstanceIsDestroyedOnceWithTheHolder) {
  Log log;
  {
    KORLumLazyInstance<Recorded> holder;
    holder.Create(log, "path");
  }
  EXPECT_EQ(log, (Log{"built path", "destroyed path"}));
}

TEST(KORLumLazyInstance, HoldersAreDestroyedInTheReverseOrderOfTheirDeclaration) {
  Log log;
  {
    KORLumLazyInstance<Recorded> first;
    KORLumLazyInstance<Recorded> second;
    second.Create(log, "second");
    first.Create(log, "first");
  }
  EXPECT_EQ(log, (Log{"built second", "built first", "destroyed second", "destroyed first"}));
}

TEST(KORLumLazyInstance, OnlyTheCreatedOneOfTwoHoldersIsDestroyed) {
  Log log;
  {
    KORLumLazyInstance<Recorded> built;
    KORLumLazyInstance<Recorded> neverBuilt;
    built.Create(log, "built");
  }
  EXPECT_EQ(log, (Log{"built built", "destroyed built"}));
}

TEST(KORLumLazyInstance, HolderAtNamespaceScopeIsNotCreatedAtLoad) {
  EXPECT_FALSE(gHolderAtNamespaceScope.IsCreated());
}

TEST(KORLumLazyInstance, ConstructorThatThrowsLeavesTheHolderNotCreated) {
  KORLumLazyInstance<FailingToBuild> holder;
  EXPECT_THROW(holder.Create(true), std::bad_alloc);
  EXPECT_FALSE(holder.IsCreated());
}

TEST(KORLumLazyInstance, HolderWhoseConstructorThrewDestroysNothing) {
  gFailingLog.clear();
  {
    KORLumLazyInstance<FailingToBuild> holder;
    EXPECT_THROW(holder.Create(true), std::bad_alloc);
  }
  EXPECT_EQ(gFailingLog, Log{});
}

TEST(KORLumLazyInstance, CreateAfterAThrowingConstructorBuildsTheInstanceOnce) {
  gFailingLog.clear();
  {
    KORLumLazyInstance<FailingToBuild> holder;
    EXPECT_THROW(holder.Create(true), std::bad_alloc);
    holder.Create(false);
    EXPECT_TRUE(holder.IsCreated());
  }
  EXPECT_EQ(gFailingLog, (Log{"built", "destroyed"}));
}
