#include "job/stamp_text.h"

#include "core/process_state.h"
#include "core/text.h"
#include "job/render_driver_escapes.h"

#include <algorithm>
#include <span>

namespace ostrel {
namespace {

constexpr std::size_t kItemUnits = StampText::kMostUnits + 1;
using ItemBuffer = std::array<char16_t, kItemUnits>;

void AddDate(StampText& text, const SystemTime& now) {
  ItemBuffer item = {};
  if (World().locale.GetDateFormatW(kLocaleUserDefault, 0, now, nullptr, item.data(), item.size()) >
      0) {
    text.AddItem(FieldText(item));
  }
}

void AddTime(StampText& text, const SystemTime& now) {
  ItemBuffer item = {};
  if (World().locale.GetTimeFormatW(kLocaleUserDefault, kTimeForce24Hours, now, u"HH:mm:ss",
                                    item.data(), item.size()) > 0) {
    text.AddItem(FieldText(item));
  }
}

void AddPageNumber(StampText& text, DeviceContext hdc, const PageNumberForm& form) {
  std::int32_t number = 0;
  World().graphics.ExtEscape(hdc, kEscapePageNumber, 0, nullptr, sizeof(number), &number);
  ItemBuffer item = {};
  TextBuilder builder(item);
  if (form.replacesPlace) {
    AddWithNumber(builder, form.text, number);
  } else {
    builder.Add(form.text).AddNumber(number);
  }
  text.AddItem(FieldText(item));
}

void AddComputerName(StampText& text) {
  ItemBuffer item = {};
  std::uint32_t units = item.size();
  if (World().system.GetComputerNameW(item.data(), &units)) {
    text.AddItem(FieldText(item));
  }
}

void AddUserName(StampText& text) {
  constexpr std::size_t kMostShown = 20;
  std::array<char16_t, 1000> item = {};
  std::uint32_t units = item.size();
  if (World().security.GetUserNameW(item.data(), &units)) {
    text.AddItem(FieldText(item).substr(0, kMostShown));
  }
}

}  // namespace

void StampText::AddItem(std::u16string_view item) {
  const auto add = [this](std::u16string_view text) {
    length_ += CopyText(std::span(units_).subspan(length_), text);
  };
  if (!IsEmpty()) {
    add(u" ");
  }
  add(item);
}

bool StampText::Shorten() {
  constexpr std::size_t kBoth = 2;
  if (length_ < kBoth) {
    return false;
  }
  length_ -= kBoth;
  std::copy_n(units_.begin() + 1, length_, units_.begin());
  return true;
}

void StampText::MoveLeft() {
  if (length_ > 1) {
    std::copy_n(units_.begin() + 1, length_ - 1, units_.begin());
  }
}

StampText RecordText(const WatermarkData& record) {
  StampText text;
  text.AddItem(FieldText(record.PageWMText));
  return text;
}

StampText TextOfStamp(DeviceContext hdc, const WatermarkData& record, const PageNumberForm& form) {
  StampText text = RecordText(record);
  if (record.WMStampOn == 0) {
    return text;
  }
  SystemTime now = {};
  if (record.WMStampDate != 0 || record.WMStampTime != 0) {
    World().system.GetLocalTime(&now);
  }
  if (record.WMStampDate != 0) {
    AddDate(text, now);
  }
  if (record.WMStampTime != 0) {
    AddTime(text, now);
  }
  if (record.WMStampPage != 0) {
    AddPageNumber(text, hdc, form);
  }
  if (record.WMStampComputer != 0) {
    AddComputerName(text);
  }
  if (record.WMStampUser != 0) {
    AddUserName(text);
  }
  return text;
}

}  // namespace ostrel
