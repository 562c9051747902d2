#include "core/own_place.h"

#include "core/process_state.h"

namespace ostrel {

OwnPlace::OwnPlace() {
  const std::uint32_t length = World().modules.GetModuleFileNameW(
      Process().LibraryModule, path_.data(), static_cast<std::uint32_t>(path_.size()));
  if (length == 0 || length >= path_.size()) {
    return;  // a path that was cut names another place
  }
  const std::u16string_view path(path_.data(), length);
  const std::size_t separator = path.rfind(u'\\');
  const std::size_t nameStart = separator == std::u16string_view::npos ? 0 : separator + 1;
  directory_ = path.substr(0, nameStart);
  const std::u16string_view name = path.substr(nameStart);
  stem_ = name.substr(0, name.rfind(u'.'));
}

std::u16string_view OwnPlace::modulePrefix() const {
  constexpr std::u16string_view kEnding = u"PCL6ui";
  std::u16string_view prefix = stem_.substr(0, kModulePrefixUnits);
  if (prefix.size() > kEnding.size() && prefix.ends_with(kEnding)) {
    prefix.remove_suffix(kEnding.size());
  }
  return prefix;
}

}  // namespace ostrel
