// The stage of the layout page, and what its tests ask of it in one word.
#pragma once

#include "pages/layout.h"
#include "pages/page_stage.h"
#include "support/case_name.h"
#include "support/forget_key.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ostrel::test {

inline constexpr std::uint32_t kLayoutDialog = 626;

// The five radio buttons of several pages, and their codes.
inline constexpr std::int32_t kPageRadioIds[] = {1387, 1389, 1390, 1391, 1392};
inline constexpr std::int16_t kPageCodes[] = {1, 2, 4, 8, 16};

class LayoutStage : public PageStage {
 public:
  LayoutStage() : PageStage({kLayoutDialog, kLayoutPage, LayoutPageProcedure}) {}

  LayoutPageState& state() { return *GetPageState<LayoutPageState>(PageSlot::kLayout); }

  // Makes a second dialog of the page, that is never shown: what its start did stays visible.
  // Result: its user.
  [[nodiscard]] headless::User StartAlone() {
    SheetPage copy = sheet->page(0).copy;
    const WindowHandle dialog =
        windows().CreateDialogWindow(copy.hInstance, kLayoutDialog, sheet->window(),
                                     copy.pfnDlgProc, reinterpret_cast<std::intptr_t>(&copy), true);
    return {world().platform, dialog};
  }

  // The radio buttons that are checked, of the five and of the three modes.
  std::vector<std::int32_t> CheckedPages() { return CheckedOf(user(), kPageRadioIds); }
  std::vector<std::int32_t> CheckedModes() {
    return CheckedOf(user(), std::initializer_list<std::int32_t>{1484, 1485, 1486});
  }
  template <typename Ids>
  static std::vector<std::int32_t> CheckedOf(const headless::User& user, const Ids& ids) {
    std::vector<std::int32_t> checked;
    std::ranges::copy_if(ids, std::back_inserter(checked),
                         [&](std::int32_t id) { return user.Checked(id); });
    return checked;
  }
  bool AreEnabled(std::initializer_list<std::int32_t> ids, bool enabled) {
    return std::ranges::all_of(ids, [&](std::int32_t id) { return user().Enabled(id) == enabled; });
  }
  bool ArePageRadiosEnabled(bool enabled) {
    return AreEnabled({1387, 1389, 1390, 1391, 1392}, enabled);
  }
  bool IsOrderLive(bool live) { return AreEnabled({1046, 1047, 1393, 1409}, live); }
  // The scale's controls that the template has; a locked one tells so by its icon and its text.
  bool IsScaleLive(bool live) {
    return AreEnabled({1025, 1410, 1443, 1107}, live) && user().Shown(1452) != live &&
           (live || user().Text(1025) == u"100");
  }

  // Forgets what was seen so far, and gives the record a favourite's name.
  void Watch() {
    changes.clear();
    SetFavorite(u"mine");
    for (const std::int32_t id : {1044, 1046, 1067}) {
      invalidated_[id] = user().Invalidations(id);
    }
  }
  using PageStage::Watch;
  // How often a control was asked to be drawn again since.
  std::size_t Redrawn(std::int32_t id) { return user().Invalidations(id) - invalidated_[id]; }
  bool IsUntitled() { return favorite() == Text(5005); }
  // At the n-th change that the sheet was told of.
  std::u16string FavoriteAt(std::size_t n) { return changes.at(n).privateDevmode.FavoriteName; }
  const PrivateDevmode& OwnAt(std::size_t n) { return changes.at(n).privateDevmode; }

 private:
  std::map<std::int32_t, std::size_t> invalidated_;
};

// The language's texts of these ids, one below the other as a tooltip tells them.
inline std::u16string JoinedReasons(const std::vector<std::uint32_t>& ids) {
  std::u16string text;
  for (const std::uint32_t id : ids) {
    text += (text.empty() ? u"" : PageStage::Text(408)) + PageStage::Text(id);
  }
  return text;
}

}  // namespace ostrel::test
