#include "pages/layout_rules.h"

#include "pages/media_rules.h"
#include "pages/page_links.h"
#include "pages/page_record.h"

namespace ostrel {
namespace {

// ---- Conditions ---------------------------------------------------------------------------------

bool Always(const LayoutFacts& /*facts*/) {
  return true;
}

bool IsTwoSided(const LayoutFacts& facts) {
  constexpr std::int16_t kLastDuplex = 5;  // beyond the public three, as old records have it
  return facts.duplex >= kDuplexLongEdge && facts.duplex <= kLastDuplex && !facts.booklet;
}

bool HasWatermark(const LayoutFacts& facts) {
  return facts.watermark >= 1;
}

bool IsTwoSidedWithWatermark(const LayoutFacts& facts) {
  return IsTwoSided(facts) && HasWatermark(facts);
}

bool IsBookletOn(const LayoutFacts& facts) {
  return facts.booklet;
}

bool IsOneSided(const LayoutFacts& facts) {
  return facts.duplex == kDuplexOneSided;
}

bool HasConflicts(const LayoutFacts& facts) {
  return facts.conflicts != 0;
}

bool ArePagesKnown(const LayoutFacts& facts) {
  return facts.pagesKnown;
}

bool ArePagesOther(const LayoutFacts& facts) {
  return facts.pagesKnown && facts.asked != facts.pages;
}

bool IsBackToOnePage(const LayoutFacts& facts) {
  return ArePagesOther(facts) && facts.asked == 1;
}

bool AreTwoPages(const LayoutFacts& facts) {
  return facts.pages == 2;
}

// The codes of several pages on a sheet. A poster's code and the one above it lie beyond.
bool AreSeveralPages(const LayoutFacts& facts) {
  constexpr std::int16_t kFewest = 2;
  constexpr std::int16_t kMost = 20;
  return facts.pages >= kFewest && facts.pages <= kMost;
}

bool AreSeveralPagesAlone(const LayoutFacts& facts) {
  return AreSeveralPages(facts) && !facts.booklet && !facts.poster;
}

bool IsAnyMode(const LayoutFacts& facts) {
  return AreSeveralPages(facts) || facts.booklet || facts.poster ||
         facts.pages == kMultipleUpPoster;
}

bool SavesToner(const LayoutFacts& facts) {
  return facts.tonerSaving != 0;
}

// ---- The table ----------------------------------------------------------------------------------

using enum LayoutOption;
using enum Verdict;
using enum EffectOn;

// clang-format off
constexpr LayoutRule kLayoutRules[] = {
    // Asked for,      Condition,               Verdict,   Box,                             Effects
    {kPoster,         IsTwoSidedWithWatermark, kRefused,  Refusal::kPosterDuplexWatermark, {{{kMultipleUp, 1}}}},
    {kPoster,         IsTwoSided,              kRefused,  Refusal::kPosterDuplex,          {{{kMultipleUp, 1}}}},
    {kPoster,         HasWatermark,            kRefused,  Refusal::kWatermarkPoster,       {{{kMultipleUp, 1}}}},
    {kPoster,         IsBookletOn,             kGoesOn,   Refusal::kNone,
        {{{kDuplex, kDuplexOneSided}, {kDuplexOff, 1}, {kBookletPrint, 0}, {kBookletButton, 0}}}},
    {kPoster,         Always,                  kAccepted, Refusal::kNone,
        {{{kMultipleUp, kMultipleUpPoster}, {kPosterPrint, 1}, {kPageRadios, 0}, {kPageBorder, 0},
          {kPageOrder, 0}, {kJobMode, 0}, {kDuplexAllowed, 0}, {kJobModeAllowed, 0}}}},

    {kBookletRadio,   HasConflicts,            kLocked,   Refusal::kNone,                  {}},
    {kBooklet,        Always,                  kGoesOn,   Refusal::kNone,
        {{{kPageRadioChecks, 0}, {kBookletPrint, 1}, {kCollate, 1}, {kScaleRadio, kFullScale},
          {kJobMode, 0}, {kJobModeAllowed, 0}, {kDuplexOff, 0}}}},
    {kBooklet,        IsOneSided,              kAccepted, Refusal::kNone,                  {{{kDuplex, kDuplexShortEdge}}}},
    {kBooklet,        HasConflicts,            kRefused,  Refusal::kBookletConflicts,      {}},
    {kBooklet,        Always,                  kAccepted, Refusal::kNone,                  {}},

    {kPagesPerSheet,  Always,                  kGoesOn,   Refusal::kNone,                  {{{kJobModeAllowed, 1}}}},
    {kPagesPerSheet,  ArePagesKnown,           kGoesOn,   Refusal::kNone,                  {{{kBookletPrint, 0}, {kPosterPrint, 0}}}},
    {kPagesPerSheet,  IsBackToOnePage,         kGoesOn,   Refusal::kNone,                  {{{kPageBorder, 0}}}},
    {kPagesPerSheet,  ArePagesOther,           kAccepted, Refusal::kNone,                  {{{kMultipleUp, kAskedPages}, {kPageOrder, 0}}}},

    {kOrderAndBorder, AreSeveralPagesAlone,    kLive,     Refusal::kNone,                  {}},
    {kOrderAndBorder, Always,                  kLocked,   Refusal::kNone,                  {}},
    {kScale,          IsAnyMode,               kLocked,   Refusal::kNone,                  {}},
    {kScale,          Always,                  kLive,     Refusal::kNone,                  {}},
    {kPosterRadio,    IsBookletOn,             kLocked,   Refusal::kNone,                  {}},
    {kThickness,      SavesToner,              kLocked,   Refusal::kNone,                  {}},
    {kOrientation,    AreTwoPages,             kAccepted, Refusal::kNone,                  {{{kPageOrder, 0}}}},
};
// clang-format on

// Kept by other pages, where the option is asked for:
// - two-sided printing while a poster is on is refused (print options page, TwoSidedClick);
// - the job mode is locked at 0 by a poster, a booklet or a watermark (AllowsJobMode);
// - reverse order is locked by two-sided printing (print options page, ShowReverseLock);
// - collation is checked and locked by a booklet (print options page, ShowCollate);
// - the list of watermarks will be locked by a poster (watermark page, which isn't built yet).

// ---- The interpreter ----------------------------------------------------------------------------

class Effects {
 public:
  Effects(UIContext& context, LayoutRuleControls& controls, std::int16_t asked)
      : context_(context), controls_(controls), asked_(asked) {}

  void Apply(const Effect& effect) {
    const std::int16_t value = effect.value == kAskedPages ? asked_ : effect.value;
    switch (effect.what) {
      case kNothing:
        break;
      case kDuplex:
        StoredDuplex(context_) = value;
        break;
      case kCollate:
        context_.publicPointer->dmCollate = value;
        break;
      case kBookletPrint:
        SetSetting(context_, "BookletPrint", value);
        break;
      case kPosterPrint:
        SetSetting(context_, "PosterPrint", value);
        break;
      case kMultipleUp:
        SetSetting(context_, "MultipleUp", value);
        break;
      case kPageOrder:
        SetSetting(context_, "PageOrder", value);
        break;
      case kPageBorder:
        SetSetting(context_, "PageBorder", value);
        break;
      case kScaleRadio:
        SetScalePercent(context_, value);
        break;
      case kJobMode:
        context_.privatePointer->JobMode = value;
        break;
      case kDuplexOff:
        TellPages(&PageLinks::duplexOff, value != 0);
        break;
      case kDuplexAllowed:
        TellPages(&PageLinks::duplexAllowed, value != 0);
        break;
      case kJobModeAllowed:
        TellPages(&PageLinks::jobModeAllowed, value != 0);
        break;
      case kPageRadios:
        controls_.EnablePageRadios(value != 0);
        break;
      case kPageRadioChecks:
        controls_.ClearPageRadios();
        break;
      case kBookletButton:
        controls_.EnableBookletButton(value != 0);
        break;
    }
  }

 private:
  UIContext& context_;
  LayoutRuleControls& controls_;
  std::int16_t asked_;
};

}  // namespace

LayoutFacts ReadLayoutFacts(UIContext& context) {
  LayoutFacts facts;
  std::int16_t pages = 1;
  facts.pagesKnown = GetUIParam(&context, "MultipleUp", &pages, sizeof(pages)) == kResultOk;
  facts.pages = facts.pagesKnown ? pages : std::int16_t{1};
  facts.booklet = IsBooklet(context);
  facts.poster = facts.pages == kMultipleUpPoster;
  facts.duplex = StoredDuplex(context);
  facts.watermark = WatermarkKind(context);
  facts.tonerSaving = Setting(context, "TonerSavingMode", 0);
  facts.conflicts = MediaRules(&context).ActiveConflicts();
  return facts;
}

bool AskFor(LayoutOption option, UIContext& context, LayoutRuleControls& controls,
            std::int16_t asked) {
  Effects effects(context, controls, asked);
  for (const LayoutRule& rule : kLayoutRules) {
    if (rule.asked != option) {
      continue;
    }
    // Anew for each row: what a row above has changed counts for those below.
    LayoutFacts facts = ReadLayoutFacts(context);
    facts.asked = asked;
    if (!rule.holds(facts)) {
      continue;
    }
    if (rule.verdict == kRefused) {
      controls.Warn(rule.refusal);
    }
    for (const Effect& effect : rule.effects) {
      effects.Apply(effect);
    }
    if (rule.verdict != kGoesOn) {
      return rule.verdict == kAccepted;
    }
  }
  return false;
}

bool IsLocked(LayoutOption option, const LayoutFacts& facts) {
  for (const LayoutRule& rule : kLayoutRules) {
    if (rule.asked == option && rule.holds(facts)) {
      return rule.verdict == kLocked;
    }
  }
  return false;
}

}  // namespace ostrel
