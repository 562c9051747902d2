#include "platform/headless/dialog_template.h"

#include "platform/headless/byte_reader.h"
#include "platform/headless/names.h"

#include <array>
#include <stdexcept>

namespace ostrel::headless {
namespace {

constexpr std::uint32_t kSetFont = 0x40;             // DS_SETFONT; DS_SHELLFONT holds it
constexpr std::uint32_t kExtendedMark = 0xFFFF0001;  // dlgVer 1 and the signature
constexpr std::size_t kMostPadding = 3;

// The classes that a template names by number, from 0x80 on.
constexpr std::uint16_t kFirstClassNumber = 0x80;
constexpr std::array<const char16_t*, 6> kNumberedClasses = {u"button",  u"edit",      u"static",
                                                             u"listbox", u"scrollbar", u"combobox"};

DialogPlace TakePlace(ByteReader& reader) {
  DialogPlace place;
  place.x = reader.Take<std::int16_t>();
  place.y = reader.Take<std::int16_t>();
  place.width = reader.Take<std::int16_t>();
  place.height = reader.Take<std::int16_t>();
  return place;
}

std::u16string TakeClass(ByteReader& reader) {
  const ResourceName name = TakeName(reader);
  if (!name.text.empty()) {
    return LowerCase(name.text);
  }
  const std::size_t row = static_cast<std::size_t>(name.number) - kFirstClassNumber;
  if (name.number < kFirstClassNumber || row >= kNumberedClasses.size()) {
    throw std::runtime_error("a control of no class");
  }
  return kNumberedClasses[row];
}

DialogControl TakeControl(ByteReader& reader, bool isExtended) {
  DialogControl control;
  reader.AlignTo4();
  if (isExtended) {
    control.helpId = reader.Take<std::uint32_t>();
    control.extendedStyle = reader.Take<std::uint32_t>();
    control.style = reader.Take<std::uint32_t>();
  } else {
    control.style = reader.Take<std::uint32_t>();
    control.extendedStyle = reader.Take<std::uint32_t>();
  }
  control.place = TakePlace(reader);
  control.id = isExtended ? reader.Take<std::int32_t>() : reader.Take<std::uint16_t>();
  if (!isExtended && control.id == 0xFFFF) {
    control.id = -1;
  }
  control.className = TakeClass(reader);
  const ResourceName title = TakeName(reader);
  control.title = title.text;
  control.titleId = title.number;
  // Counted without its own two bytes, as the resource compiler writes it in both forms.
  const auto dataSize = reader.Take<std::uint16_t>();
  const std::span<const std::byte> data = reader.TakeBytes(dataSize);
  control.creationData.assign(data.begin(), data.end());
  return control;
}

void TakeFont(ByteReader& reader, DialogTemplate& dialog) {
  if ((dialog.style & kSetFont) == 0) {
    return;
  }
  dialog.pointSize = reader.Take<std::uint16_t>();
  if (dialog.isExtended) {
    reader.Take<std::uint16_t>();  // weight
    reader.Take<std::uint16_t>();  // italic and character set
  }
  dialog.typeface = reader.TakeText();
}

}  // namespace

DialogTemplate ReadDialogTemplate(std::span<const std::byte> resource) {
  ByteReader reader(resource);
  DialogTemplate dialog;
  const auto first = reader.Take<std::uint32_t>();
  dialog.isExtended = first == kExtendedMark;
  if (dialog.isExtended) {
    dialog.helpId = reader.Take<std::uint32_t>();
    dialog.extendedStyle = reader.Take<std::uint32_t>();
    dialog.style = reader.Take<std::uint32_t>();
  } else {
    dialog.style = first;
    dialog.extendedStyle = reader.Take<std::uint32_t>();
  }
  const auto count = reader.Take<std::uint16_t>();
  dialog.place = TakePlace(reader);
  TakeName(reader);  // menu
  TakeName(reader);  // window class
  dialog.title = reader.TakeText();
  TakeFont(reader, dialog);
  for (std::uint16_t i = 0; i < count; ++i) {
    dialog.controls.push_back(TakeControl(reader, dialog.isExtended));
  }
  if (reader.left() > kMostPadding) {
    throw std::runtime_error("a dialog template with a rest");
  }
  return dialog;
}

}  // namespace ostrel::headless
