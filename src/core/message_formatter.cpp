#include "core/message_formatter.h"

#include "core/language.h"
#include "core/text.h"

#include <array>

namespace ostrel {
namespace {

constexpr std::size_t kLongestStringUnits = 1024;

constexpr std::array<std::u16string_view, 7> kForms = {u"%!",  u"%s",  u"%c", u"%ld",
                                                       u"%lu", u"%lx", u"%lX"};

// The form at the start of `text`; empty when there is none.
std::u16string_view FormAt(std::u16string_view text) {
  for (const std::u16string_view form : kForms) {
    if (text.starts_with(form)) {
      return form;
    }
  }
  return {};
}

// Adds an argument by its form. Result: false, with nothing added, when the two don't match.
bool AddArgument(TextBuilder& out, std::u16string_view form, const FormatArgument& argument,
                 ModuleHandle module) {
  if (form == u"%!" && std::holds_alternative<StringArgument>(argument)) {
    char16_t text[kLongestStringUnits] = {};
    LoadUiString(module, std::get<StringArgument>(argument).id, text);
    out.Add(FieldText(text));
  } else if (form == u"%s" && std::holds_alternative<std::u16string_view>(argument)) {
    out.Add(std::get<std::u16string_view>(argument));
  } else if (form == u"%c" && std::holds_alternative<char16_t>(argument)) {
    out.Add(std::get<char16_t>(argument));
  } else if (form == u"%ld" && std::holds_alternative<std::int32_t>(argument)) {
    out.AddNumber(std::get<std::int32_t>(argument));
  } else if (form == u"%lu" && std::holds_alternative<std::uint32_t>(argument)) {
    out.AddNumber(std::get<std::uint32_t>(argument));
  } else if ((form == u"%lx" || form == u"%lX") &&
             std::holds_alternative<std::uint32_t>(argument)) {
    out.AddHex(std::get<std::uint32_t>(argument), form == u"%lX");
  } else {
    return false;
  }
  return true;
}

}  // namespace

std::size_t FormatMessageText(std::span<char16_t> buffer, std::u16string_view format,
                              std::span<const FormatArgument> arguments, ModuleHandle module) {
  TextBuilder out(buffer);
  while (!format.empty()) {
    const std::u16string_view form = FormAt(format);
    if (form.empty()) {
      out.Add(format.front());
      format.remove_prefix(1);
      continue;
    }
    if (arguments.empty() || !AddArgument(out, form, arguments.front(), module)) {
      out.Add(form);
    }
    arguments = arguments.subspan(arguments.empty() ? 0 : 1);
    format.remove_prefix(form.size());
  }
  return out.length() + 1;
}

}  // namespace ostrel
