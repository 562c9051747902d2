#include "pages/paper_list.h"

#include "core/language.h"
#include "core/paper_tables.h"
#include "core/process_state.h"
#include "core/text.h"
#include "pages/chosen_paper.h"
#include "pages/page_support.h"
#include "pages/source_list.h"

#include <algorithm>

namespace ostrel {
namespace {

// clang-format off
constexpr std::array<ListedMedia, kListedMedia> kMediaList = {{
    // Name,                    Media, Families
    {kStringMediaPlain,          1, kAllFamilies},
    {kStringMediaThick,        257, kAllFamilies},
    {kStringMediaEnvelope,     258, kAllFamilies},
    {kStringMediaCardStock,    259, kAllFamilies},
    {kStringMediaLabels,       263, kAllFamilies},
    {kStringMediaTransparency,   2, kAllFamilies},
    {kStringMediaThin,         264, kAllFamilies},
    {kStringMediaExtraThick,   265, kFamiliesWithOptionalTrays},
    {kStringMediaLetterhead,   261, kFamiliesWithOptionalTrays},
}};
// clang-format on

constexpr std::uint32_t kUnitInch = 2;  // any other unit is told in millimetres

constexpr std::uint32_t HundredthsOfInch(std::uint32_t pixels_px600) {
  return (pixels_px600 * 100 + 300) / 600;
}

// A number of which the last `digits` stand behind the language's decimal mark.
void AddFixed(TextBuilder& out, std::uint32_t value, int digits) {
  std::uint32_t scale = 1;
  for (int i = 0; i < digits; ++i) {
    scale *= 10;
  }
  out.AddNumber(value / scale).Add(Process().DecimalCommaLanguage ? u',' : u'.');
  for (scale /= 10; scale != 0; scale /= 10) {
    out.AddNumber(value / scale % 10);
  }
}

}  // namespace

void SetDropWidth(WindowHandle list, std::int32_t width_px) {
  World().windows.SendMessageW(list, kCbSetDroppedWidth,
                               static_cast<std::uintptr_t>(std::max(width_px, kLeastDropWidth_px)),
                               0);
}

void WriteSizeLabel(ModuleHandle texts, const CustomPaperRecord& paper, std::span<char16_t> label) {
  const bool inch = paper.Unit == kUnitInch;
  const auto addLength = [&](TextBuilder& out, std::uint16_t length_px600) {
    if (inch) {
      AddFixed(out, HundredthsOfInch(length_px600), 2);
    } else {
      AddFixed(out, TenthsOfMillimetre(length_px600), 1);
    }
  };
  char16_t unit[kMaxPathUnits] = {};
  LoadUiString(texts, inch ? kStringUnitInch : kStringUnitMillimeter, unit);
  TextBuilder out(label);
  out.Add(u'(');
  addLength(out, paper.Width);
  out.Add(u" \u00D7 ");
  addLength(out, paper.Length);
  out.Add(u' ').Add(FieldText(unit)).Add(u')');
}

void FillPaperList(WindowHandle page, std::int32_t control, const UIContext& context) {
  std::array<ComboRow, kPaperRows> rows = {};
  std::ranges::transform(kPaperTable, rows.begin(), [](const PaperRow& row) {
    return ComboRow{row.nameStringId, static_cast<std::int16_t>(row.id)};
  });
  FillCombo(page, control, rows, kCbErr);

  std::array<CustomPaperRecord, kMaxCustomPapers> stored = {};
  const std::size_t count = std::min(ReadCustomPapers(stored), stored.size());
  const WindowHandle list = World().windows.GetDlgItem(page, control);
  std::int32_t width_px = 0;
  for (const CustomPaperRecord& paper : std::span(stored).first(count)) {
    if (CanBeChosen(paper)) {
      char16_t label[kMaxPathUnits] = {};
      WriteSizeLabel(context.languageModule, paper, label);
      char16_t text[kMaxPathUnits] = {};
      TextBuilder(text).Add(FieldText(paper.Name)).Add(FieldText(label));
      AddComboRow(page, control, text, static_cast<std::int16_t>(paper.PaperId));
      width_px = std::max(width_px, TextWidth(list, text)) - kDropWidthLess_px;
    }
  }
  SetDropWidth(list, width_px);
}

void FillMediaList(WindowHandle page, std::int32_t control) {
  std::array<ComboRow, kListedMedia> rows = {};
  std::size_t count = 0;
  for (const ListedMedia& media : kMediaList) {
    if (media.families == kAllFamilies || (media.families & Process().ModelFlags) != 0) {
      rows[count++] = {static_cast<std::uint32_t>(media.name), media.mediaId};
    }
  }
  FillCombo(page, control, std::span(rows).first(count), kCbErr);
}

}  // namespace ostrel
