// How the options of the layout page exclude and change one another, as one table: what is asked
// for, under which condition, and what comes of it. Rows are tried from the top.
//
// Two questions read it. AskFor is asked when the user asks for an option: it shows the box of a
// refusal, writes the record and tells the other pages. IsLocked is asked when a control is shown:
// it looks, and changes nothing. Rules that other pages keep stand below the table by name.
#pragma once

#include "core/ui_context.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace ostrel {

// What is asked for, or what is shown.
enum class LayoutOption : std::uint8_t {
  kPoster,
  kBooklet,
  kPagesPerSheet,
  kOrientation,
  kOrderAndBorder,
  kScale,
  kPosterRadio,
  kBookletRadio,
  kThickness,
};

// What conditions look at.
struct LayoutFacts {
  std::int16_t pages = 1;  // MultipleUp; 1 when it can't be read
  bool pagesKnown = true;  // whether it could be
  bool booklet = false;
  bool poster = false;         // the pages are a poster's
  std::int16_t duplex = 1;     // as stored
  std::int16_t watermark = 0;  // its kind
  std::int16_t tonerSaving = 0;
  std::uint32_t conflicts = 0;  // what forbids a booklet
  std::int16_t asked = 1;       // pages per sheet that are asked for
};
LayoutFacts ReadLayoutFacts(UIContext& context);

enum class Verdict : std::uint8_t {
  kGoesOn,    // the effects, and the rows below are tried too
  kAccepted,  // the effects
  kRefused,   // the box, then the effects; what rows above have written stays written
  kLocked,
  kLive,
};

enum class Refusal : std::uint8_t {
  kNone,
  kPosterDuplexWatermark,
  kPosterDuplex,
  kWatermarkPoster,
  kBookletConflicts,
};

enum class EffectOn : std::uint8_t {
  kNothing,
  // Words of the record.
  kDuplex,
  kCollate,
  kBookletPrint,
  kPosterPrint,
  kMultipleUp,
  kPageOrder,
  kPageBorder,
  kScaleRadio,
  kJobMode,
  // What other pages are told.
  kDuplexOff,
  kDuplexAllowed,
  kJobModeAllowed,
  // Controls of the page: whether they are enabled, or checked.
  kPageRadios,
  kPageRadioChecks,
  kBookletButton,
};

// Stands for the pages per sheet that were asked for.
inline constexpr std::int16_t kAskedPages = -1;

struct Effect {
  EffectOn what = EffectOn::kNothing;
  std::int16_t value = 0;
};

// A row, with its columns in the order in which they are read.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding)
struct LayoutRule {
  LayoutOption asked;
  bool (*holds)(const LayoutFacts& facts);
  Verdict verdict;
  Refusal refusal;
  std::array<Effect, 8> effects;
};

// The controls of the page that the rules work.
class LayoutRuleControls {
 public:
  virtual void Warn(Refusal refusal) = 0;
  virtual void EnablePageRadios(bool enable) = 0;
  virtual void ClearPageRadios() = 0;
  virtual void EnableBookletButton(bool enable) = 0;

 protected:
  ~LayoutRuleControls() = default;
};

// Asks for an option, with `asked` pages per sheet for that option. Result: whether it was
// accepted; an option without a row that holds isn't.
bool AskFor(LayoutOption option, UIContext& context, LayoutRuleControls& controls,
            std::int16_t asked = 1);

// Whether an option's controls are locked.
bool IsLocked(LayoutOption option, const LayoutFacts& facts);

}  // namespace ostrel
