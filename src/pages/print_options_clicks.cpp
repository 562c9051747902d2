// The print options page: what its buttons and its list of job modes do.
#include "config/setting_stores.h"
#include "core/heap_block.h"
#include "core/language.h"
#include "core/string_ids.h"
#include "core/text.h"
#include "pages/media_rules.h"
#include "pages/page_links.h"
#include "pages/page_record.h"
#include "pages/print_options_page.h"
#include "pages/warning_boxes.h"

#include <iterator>

namespace ostrel::options {

// ---- Clicks -------------------------------------------------------------------------------------

namespace {

// The box follows the word only when both agree before the click. Result: whether anything changed.
bool ToggleCheck(const OptionsPage& page, RadioButton& check, std::int32_t control,
                 std::int16_t& word) {
  const bool checked = page.IsChecked(control);
  if ((word == 1) != checked) {
    return false;
  }
  check.SetCheck(!checked);
  word = checked ? 0 : 1;
  page.Changed();
  return true;
}

// Two-sided printing was asked for and can't be had.
void BackToOneSided(const OptionsPage& page) {
  page.state.duplexGroup.Select(kDuplexOff);
  StoredDuplex(page.context) = kDuplexOneSided;
  page.Changed();
  // The focus goes along: the window system clicks a radio button that gets the focus while it
  // isn't checked, and would ask for the same again whenever the user comes back to the sheet.
  if (const WindowHandle radio = page.Item(kDuplexOff); World().windows.IsWindowEnabled(radio)) {
    World().windows.SetFocus(radio);
  }
}

}  // namespace

void CollateClick(const OptionsPage& page) {
  if (ToggleCheck(page, page.state.collateCheck, kCollateCheck,
                  page.context.publicPointer->dmCollate)) {
    page.Redraw(kCollationPicture);
  }
}

void JobFlagClick(const OptionsPage& page) {
  ToggleCheck(page, page.state.jobFlagCheck, kJobFlagCheck, page.context.privatePointer->JobFlag);
}

void FinessClick(const OptionsPage& page) {
  ToggleCheck(page, page.state.finessCheck, kFinessCheck, page.context.privatePointer->FinessMode);
}

void ReverseClick(const OptionsPage& page) {
  const bool checked = page.IsChecked(kReverseCheck);
  const std::int16_t turned = checked ? 0 : 1;
  if (Setting(page.context, "ReversePrint", 0) == turned) {
    return;
  }
  if (!checked) {
    page.state.reverseCheck.Select(kReverseCheck);
  }
  SetSetting(page.context, "ReversePrint", turned);
  if (checked) {
    Refresh(page);
  } else {
    page.state.duplexGroup.Enable(false);
    page.Show(kDuplexIcon, true);
  }
  page.Changed();
  page.Redraw(kCollationPicture);
}

void ResolutionClick(const OptionsPage& page, std::int32_t control) {
  const bool fine = control == kResolution1200Radio;
  const std::int16_t dotsPerInch = fine ? kResolution1200 : kResolution600;
  page.context.publicPointer->dmPrintQuality = dotsPerInch;
  page.context.publicPointer->dmYResolution = dotsPerInch;
  SetSetting(page.context, "PrintMode", fine ? 1 : 0);
  if (!page.IsChecked(control)) {
    page.state.resolutionGroup.Select(control);
    page.Changed();
  }
}

void OneSidedClick(const OptionsPage& page) {
  if (StoredDuplex(page.context) == kDuplexOneSided) {
    return;
  }
  page.state.duplexGroup.Select(kDuplexOff);
  StoredDuplex(page.context) = kDuplexOneSided;
  page.Changed();
  TellPages(&PageLinks::duplexOff, true);
  ShowReverseLock(page, false);
  DuplexPicture(page);
}

void TwoSidedClick(const OptionsPage& page, std::int32_t control, std::int16_t target) {
  UIContext& context = page.context;
  // While a box is open the focus comes and goes, and brings clicks that nobody made.
  if (StoredDuplex(context) == target || page.state.refusing) {
    return;
  }
  if (PaperRowRefuses(context, target)) {
    page.state.refusing = true;
    WarnPaperNoDuplex(page.window, page.texts());
    BackToOneSided(page);
    page.state.refusing = false;
    return;
  }
  SetDevmodeField(&context, kDmMediaType, kMediaPlain);
  TellPages(&PageLinks::duplexOff, false);
  page.Untitled();
  if (IsPosterPages(context)) {
    page.state.refusing = true;
    WarnPosterDuplex(page.window, page.texts());
    BackToOneSided(page);  // the media stays plain
    page.state.refusing = false;
    return;
  }
  ShowReverseLock(page, true);
  page.state.duplexGroup.Select(control);
  StoredDuplex(context) = target;
  page.Untitled();
  DuplexPicture(page);
  SetSheetChanged(page.window);
}

// ---- The job mode -------------------------------------------------------------------------------

void JobModeChange(const OptionsPage& page) {
  std::int16_t& mode = page.context.privatePointer->JobMode;
  const std::int16_t before = mode;
  std::int16_t chosen = 0;
  if (SelectedComboValue(page.window, kJobModeCombo, &chosen) && chosen != mode) {
    mode = chosen;
    NameUntitled(page.window);
  }
  const bool isOther = mode != before;
  const bool allowed = AllowsJobMode(page.context);
  TellPages(&PageLinks::jobModeAllowed, allowed);
  if (!allowed) {
    mode = 0;
  }
  if (isOther || mode != before) {
    SetSheetChanged(page.window);
  }
  // By its place in the list, which is its value.
  World().windows.SendMessageW(page.Item(kJobModeCombo), kCbSetCurSel,
                               static_cast<std::uintptr_t>(mode), 0);
  Refresh(page);
}

// ---- Defaults -----------------------------------------------------------------------------------

namespace {

// Reads the factory favourite into `scratch`. Where it was never stored, the driver's own defaults
// stand for it: it is they that are stored under that name. Result: whether there is a record.
bool ReadFactoryFavorite(const char16_t* name, UIContext& scratch) {
  const FavoriteStore store;
  return (store.Init() && store.Read(name, &scratch)) ||
         InitDriverDevmode(&scratch.devmode, scratch.driverName, nullptr);
}

void TakeOverDefaults(UIContext& context, const DriverDevmode& defaults) {
  PublicDevmode& record = *context.publicPointer;
  const PublicDevmode& from = defaults.publicDevmode;
  record.dmCopies = from.dmCopies;
  record.dmDuplex = from.dmDuplex;
  context.privatePointer->Duplex = from.dmDuplex;
  record.dmCollate = from.dmCollate;
  record.dmPrintQuality = from.dmPrintQuality;
  context.privatePointer->FinessMode = defaults.privateDevmode.FinessMode;
  context.privatePointer->ReversePrint = defaults.privateDevmode.ReversePrint;
}

// Result: whether there was a record to take over.
bool TakeOverFactoryFavorite(UIContext& context, const char16_t* name) {
  const HeapBlock<UIContext> scratch(sizeof(UIContext));
  if (!scratch) {
    return false;
  }
  *scratch = context;
  scratch->publicPointer = &scratch->devmode.publicDevmode;
  scratch->privatePointer = &scratch->devmode.privateDevmode;
  if (!ReadFactoryFavorite(name, *scratch)) {
    return false;
  }
  TakeOverDefaults(context, scratch->devmode);
  return true;
}

void BackToDefaults(const OptionsPage& page) {
  PrivateDevmode& settings = *page.context.privatePointer;
  char16_t name[std::size(PrivateDevmode{}.FavoriteName)] = {};
  const bool named = LoadExistingString(page.texts(), kStringDefaultFavorite, name);
  // Only settings that are the favourite's take its name, and only a name that there is.
  if (TakeOverFactoryFavorite(page.context, name) && named) {
    CopyText(settings.FavoriteName, FieldText(name));
  } else {
    page.Untitled();
  }
  settings.JobMode = 0;
  settings.JobFlag = 0;
  settings.PrintMode = 0;
  settings.sLaserTestAPResolution = 0;
  Refresh(page);
  page.Redraw(kCollationPicture);
  SetSheetChanged(page.window);
}

}  // namespace

void DefaultsClick(const OptionsPage& page) {
  if (IsBooklet(page.context)) {
    WarnBookletCollate(page.window, page.texts());
  } else {
    BackToDefaults(page);
  }
  World().windows.SetFocus(page.Item(kDefaultsButton));
}

}  // namespace ostrel::options
