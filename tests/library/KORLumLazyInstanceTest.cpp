// KORLumLazyInstance: the storage of the module's file paths, built on first
// use and destroyed with the library only if it was built.
#include "KORLumLazyInstance.h"

#include <gtest/gtest.h>

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
