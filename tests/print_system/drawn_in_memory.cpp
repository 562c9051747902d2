#include "platform/headless/drawing_record.h"
#include "platform/headless/headless_platform.h"

#include <functional>
#include <vector>

namespace ostrel::print_system {

// Declared in metafile_operations.h, which can't be included here.
std::vector<headless::DrawingOperation> DrawnInMemory(
    const headless::PrinterDevice& device,
    const std::function<void(Platform& platform, DeviceContext page)>& draw) {
  headless::HeadlessPlatform platform;
  headless::PrinterDevice page = device;
  draw(platform.lists, platform.graphics.OpenPrinter(page));
  return page.operations;
}

}  // namespace ostrel::print_system
