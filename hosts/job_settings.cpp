#include "job_settings.h"

#include "config/utf8.h"
#include "record_fields.h"

#include <charconv>
#include <cstdint>
#include <stdexcept>
#include <string>

namespace ostrel {
namespace {

constexpr std::string_view kPictureField = "PageWMFileName";

[[noreturn]] void Refuse(std::string_view line, const char* why) {
  throw std::runtime_error(std::string("settings: ") + why + ": " + std::string(line));
}

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r";
  const std::size_t first = text.find_first_not_of(kBlanks);
  return first == std::string_view::npos
             ? std::string_view()
             : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::u16string Widened(std::string_view text) {
  std::u16string wide(text.size() + 1, u'\0');  // no letter takes more units than it has bytes
  wide.resize(Utf8ToWide(text, wide));
  return wide;
}

bool IsFullPath(std::u16string_view path) {
  return path.find(u':') != std::u16string_view::npos || path.starts_with(u'\\');
}

void ApplyLine(DriverDevmode& record, std::string_view line, std::u16string_view folder) {
  const std::size_t sign = line.find('=');
  if (sign == std::string_view::npos) {
    Refuse(line, "no value");
  }
  const std::string_view name = Trimmed(line.substr(0, sign));
  const std::string_view value = Trimmed(line.substr(sign + 1));
  const NamedField* field = FindField(name);
  if (field == nullptr) {
    Refuse(line, "no such setting");
  }
  const bool isQuoted = value.size() >= 2 && value.front() == '"' && value.back() == '"';
  if (isQuoted != (field->field.kind == FieldKind::kText)) {
    Refuse(line, "a text for a number, or a number for a text");
  }
  if (isQuoted) {
    std::u16string text = Widened(value.substr(1, value.size() - 2));
    if (name == kPictureField && !text.empty() && !IsFullPath(text)) {
      text.insert(0, folder);
    }
    SetFieldText(record, *field, text);
    return;
  }
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
  if (error != std::errc() || end != value.data() + value.size()) {
    Refuse(line, "no number");
  }
  SetFieldNumber(record, *field, number);
}

}  // namespace

void ApplyJobSettings(DriverDevmode& record, std::string_view text, std::u16string_view folder) {
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    const std::string_view line = Trimmed(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (!line.empty() && line.front() != '#') {
      ApplyLine(record, line, folder);
    }
  }
}

}  // namespace ostrel
