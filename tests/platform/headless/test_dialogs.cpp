#include "platform/headless/test_dialogs.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <span>
#include <stdexcept>
#include <utility>

namespace ostrel::headless {
namespace {

MessageLog* current = nullptr;

std::string Hex(std::uint32_t number) {
  char text[16];
  std::snprintf(text, sizeof(text), "%x", number);
  return text;
}

}  // namespace

std::shared_ptr<const Resources> TestDialogs() {
  std::ifstream file(OSTREL_TEST_DIALOGS, std::ios::binary);
  if (!file) {
    throw std::runtime_error("missing " OSTREL_TEST_DIALOGS);
  }
  const std::vector<char> bytes((std::istreambuf_iterator<char>(file)), {});
  auto resources = std::make_shared<Resources>(ReadResources(std::as_bytes(std::span(bytes))));
  resources->icons[77] = {{{16, 16, 8}, {32, 32, 32}}};
  resources->bitmaps[78] = {.width = 7, .height = 5, .bitsPerPixel = 1};
  return resources;
}

MessageLog::MessageLog() {
  current = this;
}

MessageLog::~MessageLog() {
  current = nullptr;
}

void MessageLog::Write(std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam) {
  switch (message) {
    case kWmInitDialog:
      lines_.push_back("init " + std::to_string(lParam));
      break;
    case kWmShowWindow:
      lines_.push_back("show " + std::to_string(wParam));
      break;
    case kWmDestroy:
      lines_.emplace_back("destroy");
      break;
    case kWmCommand:
      lines_.push_back("command " + std::to_string(LowWord(wParam)) + ' ' + Hex(HighWord(wParam)));
      break;
    case kWmNotify: {
      const auto& header = *reinterpret_cast<const NotifyHeader*>(lParam);
      std::string line = "notify " + std::to_string(static_cast<std::int32_t>(header.code));
      if (header.code == kUdnDeltaPos) {
        const auto& delta = *reinterpret_cast<const NotifyUpDown*>(lParam);
        line += " from " + std::to_string(wParam) + " at " + std::to_string(delta.iPos) + " by " +
                std::to_string(delta.iDelta);
      }
      lines_.push_back(line);
      break;
    }
    case kWmMouseMove:
      lines_.emplace_back("mouse");
      break;
    default:
      lines_.push_back("message " + Hex(message) + ' ' + Hex(static_cast<std::uint32_t>(wParam)));
      break;
  }
}

std::intptr_t MessageLog::Procedure(WindowHandle window, std::uint32_t message,
                                    std::uintptr_t wParam, std::intptr_t lParam) {
  if (current == nullptr) {
    return 0;  // a dialog that outlives its test
  }
  current->Write(message, wParam, lParam);
  return current->handle ? current->handle(window, message, wParam, lParam) : 0;
}

}  // namespace ostrel::headless
