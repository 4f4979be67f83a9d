#include "KORError.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace {

// A raised error that counts its live instances, to prove who deletes it.
class CountedError : public KORError {
 public:
  explicit CountedError(const char* iDiagnostic) : KORError(iDiagnostic) { ++sLive; }
  ~CountedError() override { --sLive; }
  CountedError(const CountedError&) = delete;
  CountedError& operator=(const CountedError&) = delete;

  static int sLive;
};
int CountedError::sLive = 0;

}  // namespace

// ---------------------------------------------------------------------------
// KORError and KORNLSCatalogError

TEST(KORError, ClassNameIsKORError) {
  const KORError error("broken");
  EXPECT_STREQ(KORError::ClassName(), "KORError");
  EXPECT_STREQ(error.GetClassName(), "KORError");
}

TEST(KORError, IsKindOfItsOwnClass) {
  const KORError error("broken");
  EXPECT_EQ(error.IsKindOf("KORError"), 1);
}

TEST(KORError, IsNotKindOfADerivedClass) {
  const KORError error("broken");
  EXPECT_EQ(error.IsKindOf("KORNLSCatalogError"), 0);
}

TEST(KORError, IsNotKindOfAnUnrelatedOrNullName) {
  const KORError error("broken");
  EXPECT_EQ(error.IsKindOf("KORString"), 0);
  EXPECT_EQ(error.IsKindOf(""), 0);
  EXPECT_EQ(error.IsKindOf(nullptr), 0);
}

TEST(KORError, GetDiagnosticGivesTheText) {
  const KORError error("catalogue KORLum: key TypeGraph.Msg not declared");
  EXPECT_STREQ(error.GetDiagnostic(), "catalogue KORLum: key TypeGraph.Msg not declared");
}

TEST(KORNLSCatalogError, ClassNameIsKORNLSCatalogError) {
  const KORNLSCatalogError error("no file");
  EXPECT_STREQ(KORNLSCatalogError::ClassName(), "KORNLSCatalogError");
  EXPECT_STREQ(error.GetClassName(), "KORNLSCatalogError");
}

TEST(KORNLSCatalogError, GetClassNameThroughTheBaseGivesTheDerivedName) {
  const KORNLSCatalogError error("no file");
  const KORError& base = error;
  EXPECT_STREQ(base.GetClassName(), "KORNLSCatalogError");
}

TEST(KORNLSCatalogError, IsKindOfItsOwnClassAndItsBase) {
  const KORNLSCatalogError error("no file");
  const KORError& base = error;
  EXPECT_EQ(base.IsKindOf(KORNLSCatalogError::ClassName()), 1);
  EXPECT_EQ(base.IsKindOf(KORError::ClassName()), 1);
}

TEST(KORNLSCatalogError, IsNotKindOfAnUnrelatedOrNullName) {
  const KORNLSCatalogError error("no file");
  EXPECT_EQ(error.IsKindOf("KORNLSCatalog"), 0);
  EXPECT_EQ(error.IsKindOf("korerror"), 0);
  EXPECT_EQ(error.IsKindOf(nullptr), 0);
}

TEST(KORNLSCatalogError, GetDiagnosticGivesTheText) {
  const KORNLSCatalogError error("catalogue KORLum: no file for fr_FR, fr, default");
  EXPECT_STREQ(error.GetDiagnostic(), "catalogue KORLum: no file for fr_FR, fr, default");
}

// ---------------------------------------------------------------------------
// KORXHContext

TEST(KORXHContext, ProtectReturnsZeroWhenTheRegionCompletes) {
  KORXHContext context;
  bool ran = false;
  EXPECT_EQ(context.Protect([&] { ran = true; }), 0);
  EXPECT_TRUE(ran);
}

TEST(KORXHContext, CompletedRegionLeavesNoErrorHeld) {
  KORXHContext context;
  ASSERT_EQ(context.Protect([] {}), 0);
  EXPECT_EQ(context.GetError(), nullptr);
  EXPECT_EQ(context.IsKindOf(KORError::ClassName()), 0);
  EXPECT_STREQ(context.GetDiagnostic(), "");
}

TEST(KORXHContext, ProtectReturnsOneWhenAKORErrorIsRaised) {
  KORXHContext context;
  EXPECT_EQ(context.Protect([] { KORRaise(new KORError("broken")); }), 1);
}

TEST(KORXHContext, RaiseLeavesTheRestOfTheRegionUnrun) {
  KORXHContext context;
  bool after = false;
  context.Protect([&] {
    KORRaise(new KORError("broken"));
    after = true;  // never reached
  });
  EXPECT_FALSE(after);
}

TEST(KORXHContext, ContextHoldsTheRaisedError) {
  KORXHContext context;
  KORError* raised = new KORNLSCatalogError("key not declared");
  ASSERT_EQ(context.Protect([raised] { KORRaise(raised); }), 1);
  EXPECT_EQ(context.GetError(), raised);
}

TEST(KORXHContext, IsKindOfTestsTheHeldErrorsClass) {
  KORXHContext context;
  ASSERT_EQ(context.Protect([] { KORRaise(new KORNLSCatalogError("key not declared")); }), 1);
  EXPECT_EQ(context.IsKindOf(KORNLSCatalogError::ClassName()), 1);
  EXPECT_EQ(context.IsKindOf(KORError::ClassName()), 1);
  EXPECT_EQ(context.IsKindOf("KORUnrelatedError"), 0);
  EXPECT_EQ(context.IsKindOf(nullptr), 0);
}

TEST(KORXHContext, BaseErrorIsNotKindOfTheDerivedClass) {
  KORXHContext context;
  ASSERT_EQ(context.Protect([] { KORRaise(new KORError("broken")); }), 1);
  EXPECT_EQ(context.IsKindOf(KORNLSCatalogError::ClassName()), 0);
}

TEST(KORXHContext, GetDiagnosticGivesTheHeldErrorsText) {
  KORXHContext context;
  ASSERT_EQ(context.Protect([] { KORRaise(new KORNLSCatalogError("key not declared")); }), 1);
  EXPECT_STREQ(context.GetDiagnostic(), "key not declared");
}

TEST(KORXHContext, ReleaseDeletesTheHeldError) {
  KORXHContext context;
  ASSERT_EQ(context.Protect([] { KORRaise(new CountedError("counted")); }), 1);
  ASSERT_EQ(CountedError::sLive, 1);
  context.Release();
  EXPECT_EQ(CountedError::sLive, 0);
  EXPECT_EQ(context.GetError(), nullptr);
  EXPECT_STREQ(context.GetDiagnostic(), "");
}

TEST(KORXHContext, ReleaseWithoutHeldErrorDoesNothing) {
  KORXHContext context;
  context.Release();
  EXPECT_EQ(context.GetError(), nullptr);
}

TEST(KORXHContext, ContextDyingWhileHoldingAnErrorDeletesIt) {
  {
    KORXHContext context;
    ASSERT_EQ(context.Protect([] { KORRaise(new CountedError("counted")); }), 1);
    ASSERT_EQ(CountedError::sLive, 1);
  }
  EXPECT_EQ(CountedError::sLive, 0);
}

TEST(KORXHContext, SecondCaughtErrorReplacesAndDeletesTheFirst) {
  KORXHContext context;
  ASSERT_EQ(context.Protect([] { KORRaise(new CountedError("first")); }), 1);
  ASSERT_EQ(context.Protect([] { KORRaise(new CountedError("second")); }), 1);
  EXPECT_EQ(CountedError::sLive, 1);
  EXPECT_STREQ(context.GetDiagnostic(), "second");
}

TEST(KORXHContext, RaisePassesTheSameErrorOn) {
  KORError* raised = new KORNLSCatalogError("key not declared");
  KORXHContext outer;
  const KORError* innerHeld = nullptr;
  const int status = outer.Protect([&] {
    KORXHContext inner;
    if (inner.Protect([raised] { KORRaise(raised); })) {
      innerHeld = inner.GetError();
      inner.Raise();
    }
  });
  EXPECT_EQ(status, 1);
  EXPECT_EQ(innerHeld, raised);
  EXPECT_EQ(outer.GetError(), raised);
  EXPECT_EQ(outer.IsKindOf(KORNLSCatalogError::ClassName()), 1);
}

TEST(KORXHContext, RaiseGivesUpTheError) {
  KORXHContext outer;
  bool innerStillHolds = true;
  outer.Protect([&] {
    KORXHContext inner;
    inner.Protect([] { KORRaise(new CountedError("counted")); });
    try {
      inner.Raise();
    } catch (...) {
      innerStillHolds = inner.GetError() != nullptr;
      throw;
    }
  });
  EXPECT_FALSE(innerStillHolds);
  // The inner context died without deleting it: the outer one holds it.
  EXPECT_EQ(CountedError::sLive, 1);
  EXPECT_STREQ(outer.GetDiagnostic(), "counted");
}

TEST(KORXHContext, NestedContextThatHandlesTheErrorLetsTheOuterRegionComplete) {
  KORXHContext outer;
  const int status = outer.Protect([] {
    KORXHContext inner;
    if (inner.Protect([] { KORRaise(new KORError("handled")); })) inner.Release();
  });
  EXPECT_EQ(status, 0);
  EXPECT_EQ(outer.GetError(), nullptr);
}

TEST(KORXHContext, StandardExceptionPassesThroughProtect) {
  KORXHContext context;
  try {
    context.Protect([] { throw std::runtime_error("not a platform error"); });
    ADD_FAILURE() << "the exception was swallowed";
  } catch (const std::runtime_error& exception) {
    EXPECT_STREQ(exception.what(), "not a platform error");
  }
  EXPECT_EQ(context.GetError(), nullptr);
}

TEST(KORXHContext, RaisedErrorCaughtOutsideAnyContextIsDeleted) {
  try {
    KORRaise(new CountedError("counted"));
  } catch (const KORRaisedError& raised) {
    EXPECT_STREQ(raised.Get()->GetDiagnostic(), "counted");
    EXPECT_EQ(CountedError::sLive, 1);
  }
  EXPECT_EQ(CountedError::sLive, 0);
}

TEST(KORXHContextDeathTest, RaiseWithoutHeldErrorStopsTheProcess) {
  KORXHContext context;
  EXPECT_DEATH(context.Raise(),
               "Platform/src/KORError.cpp:[0-9]+: .*Assertion `_error != nullptr' failed");
}

TEST(KORXHContextDeathTest, RaiseAfterReleaseStopsTheProcess) {
  KORXHContext context;
  context.Protect([] { KORRaise(new KORError("broken")); });
  context.Release();
  EXPECT_DEATH(context.Raise(),
               "Platform/src/KORError.cpp:[0-9]+: .*Assertion `_error != nullptr' failed");
}

TEST(KORRaiseDeathTest, RaisingANullErrorStopsTheProcess) {
  EXPECT_DEATH(KORRaise(nullptr),
               "Platform/src/KORError.cpp:[0-9]+: .*Assertion `iError != nullptr' failed");
}
