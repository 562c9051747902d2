// A user's story on a page, played again and again with one call of the platform after the other
// failing. Whatever fails, the caller gets a whole record or an untouched one, and nothing is left
// behind. Also what "whole" means.
#pragma once

#include "core/devmode_lifecycle.h"
#include "pages/page_stage.h"
#include "support/byte_record.h"

#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace ostrel::test {

// Deeds one after the other, in the order of their braces; whether a hand gets through doesn't
// matter here.
struct Do {
  template <typename... Deeds>
  explicit Do(const Deeds&... /*deeds*/) {}
};

// A whole record: nothing in it that a repair would change. The custom papers are cleared in a live
// record, while a repair would give them back.
inline std::string Unrepaired(const DriverDevmode& record) {
  PrivateDevmode live = record.privateDevmode;
  DriverDevmode defaults;
  InitDriverDevmode(&defaults, kDriverName, nullptr);
  std::memcpy(live.CustomPaperSize, defaults.privateDevmode.CustomPaperSize,
              sizeof(live.CustomPaperSize));
  PrivateDevmode repaired = live;
  ValidatePrivateDevmode(&repaired);
  return Difference(BytesOf(live), BytesOf(repaired));
}

inline std::string UnrepairedFields(const DriverDevmode& record) {
  auto context = std::make_unique<UIContext>();
  context->devmode = record;
  context->publicPointer = &context->devmode.publicDevmode;
  context->privatePointer = &context->devmode.privateDevmode;
  for (const std::uint32_t flag :
       {std::uint32_t{kDmOrientation}, std::uint32_t{kDmPaperSize}, std::uint32_t{kDmPaperLength},
        std::uint32_t{kDmPaperWidth}, std::uint32_t{kDmCopies}, std::uint32_t{kDmDefaultSource},
        std::uint32_t{kDmPrintQuality}, std::uint32_t{kDmColor}, std::uint32_t{kDmDuplex},
        std::uint32_t{kDmYResolution}, std::uint32_t{kDmCollate}, std::uint32_t{kDmMediaType}}) {
    std::int16_t value = 0;
    GetDevmodeField(context.get(), flag, &value);
  }
  return Difference(BytesOf(record), BytesOf(context->devmode));
}

// A caller's record of random bytes that is one of this driver all the same.
inline void MakeHostileCaller(DriverDevmode& in, std::uint32_t seed) {
  const DriverDevmode whole = in;
  SetBytes(in, RandomBytes(sizeof(in), seed));
  WriteHeader(&in.publicDevmode, ReadHeader(&whole.publicDevmode));
  in.publicDevmode.dmFields = kDriverDevmodeFields;
  in.privateDevmode.Signature = kPrivateSignature;
  std::ranges::copy(whole.publicDevmode.dmDeviceName, in.publicDevmode.dmDeviceName);
}

// A live record of random bytes, as if another page had left it so.
inline void MakeHostileRecord(UIContext& context, std::uint32_t seed) {
  const DriverDevmode before = context.devmode;
  SetBytes(context.devmode, RandomBytes(sizeof(before), seed));
  WriteHeader(context.publicPointer, ReadHeader(&before.publicDevmode));
}

class FailureWalk {
 public:
  // Plays a story on a stage that isn't open yet, with the n-th call failing. Result: whether there
  // was such a call.
  bool Play(PageStage& stage, const PageStage::Prepare& prepare, const std::function<void()>& use,
            std::size_t n) {
    const DriverDevmode in = stage.scene.in;
    const auto poison = BytesOf(stage.scene.out);
    headless::FaultPlan& faults = stage.world().platform.faults;
    faults.StartTrace();
    faults.FailCall(n);
    const bool open = stage.Open(prepare);
    bool ok = false;
    if (stage.sheet->isOpen() && stage.page() != nullptr) {
      use();
    }
    if (stage.sheet->isOpen()) {
      ok = stage.sheet->PressOk() || stage.sheet->PressOk();  // a box may hold it once
    }
    opened_ += open ? 1U : 0U;
    accepted_ += ok ? 1U : 0U;
    const bool fired = faults.fired();
    faults.Clear();
    stage.sheet.reset();
    EXPECT_EQ(Difference(BytesOf(stage.scene.in), BytesOf(in)), "");
    if (ok) {
      EXPECT_EQ(Unrepaired(stage.scene.out), "");
      EXPECT_EQ(UnrepairedFields(stage.scene.out), "");
    } else {
      EXPECT_EQ(Difference(BytesOf(stage.scene.out), poison), "");
    }
    EXPECT_EQ(stage.windows().liveWindows(), 0U);
    EXPECT_EQ(stage.graphics().liveBitmaps(), 0U);
    EXPECT_EQ(stage.graphics().liveContexts(), 0U);
    EXPECT_EQ(stage.world().platform.files.openFiles(), 0U);
    EXPECT_EQ(stage.world().platform.registry.openKeys(), 0U);
    if (testing::Test::HasFailure()) {
      ADD_FAILURE() << "with call " << n << " failing: " << faults.trace().at(n - 1);
    }
    return fired;
  }

  // Walks through all calls of a story. Blocks that are still live are found when the stage's world
  // ends.
  void Walk(const std::function<bool(std::size_t n)>& play, std::size_t leastCalls) {
    constexpr std::size_t kMostCalls = 6000;
    std::size_t n = 1;
    while (n < kMostCalls && play(n) && !testing::Test::HasFailure()) {
      ++n;
    }
    EXPECT_LT(n, kMostCalls);
    EXPECT_GT(n, leastCalls);
    EXPECT_GT(opened_, n / 2);
    EXPECT_GT(accepted_, n / 2);
    EXPECT_LT(opened_, n);  // some failures keep the sheet from opening
    testing::Test::RecordProperty("calls", static_cast<int>(n));
    testing::Test::RecordProperty("opened", static_cast<int>(opened_));
    testing::Test::RecordProperty("accepted", static_cast<int>(accepted_));
  }

 private:
  std::size_t opened_ = 0;
  std::size_t accepted_ = 0;
};

}  // namespace ostrel::test
