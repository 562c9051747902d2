// Reads a compiled dialog template, in its plain form (DLGTEMPLATE) and its extended one
// (DLGTEMPLATEEX): what the dialog is and which controls it has, in dialog units.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace ostrel::headless {

// A place in dialog units, relative to the dialog's client area.
struct DialogPlace {
  std::int16_t x = 0;
  std::int16_t y = 0;
  std::int16_t width = 0;
  std::int16_t height = 0;
  bool operator==(const DialogPlace&) const = default;
};

struct DialogControl {
  std::int32_t id = 0;  // -1 for a control that nobody asks for; the plain form's 0xFFFF is -1 too
  std::uint32_t style = 0;
  std::uint32_t extendedStyle = 0;
  std::uint32_t helpId = 0;
  DialogPlace place = {};
  std::u16string className =
      {};  // in lower case; the six classes that have a number by their names
  std::u16string title = {};
  std::uint16_t titleId = 0;  // of the icon or bitmap shown; 0 when there is a text
  std::vector<std::byte> creationData = {};
};

struct DialogTemplate {
  bool isExtended = false;
  std::uint32_t style = 0;
  std::uint32_t extendedStyle = 0;
  std::uint32_t helpId = 0;
  DialogPlace place = {};
  std::u16string title = {};
  std::uint16_t pointSize = 0;  // 0 when the template names no font
  std::u16string typeface = {};
  std::vector<DialogControl> controls = {};
};

// Throws std::runtime_error for what is not a template or is cut short.
DialogTemplate ReadDialogTemplate(std::span<const std::byte> resource);

}  // namespace ostrel::headless
