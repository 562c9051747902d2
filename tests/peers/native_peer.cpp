// The peer over the in-memory platform, with real files.
#include "folder_shell.h"
#include "store_peer.h"
#include "support/disk_files.h"
#include "support/test_world.h"

#include <memory>
#include <string>
#include <vector>

namespace ostrel::peers {
namespace {

class NativeWorld {
 public:
  explicit NativeWorld(const std::string& folder)
      : shell_(std::u16string(folder.begin(), folder.end())) {
    world_.process.platform = &lists_;
  }

 private:
  test::TestWorld world_;
  test::DiskFiles files_{"/", world_.platform.debug};
  FolderShell shell_;
  Platform lists_ = {.print = world_.platform.print,
                     .locale = world_.platform.locale,
                     .modules = world_.platform.modules,
                     .files = files_,
                     .registry = world_.platform.registry,
                     .security = world_.platform.security,
                     .shell = shell_,
                     .windows = world_.platform.windows,
                     .graphics = world_.platform.graphics,
                     .system = world_.platform.system,
                     .memory = world_.platform.memory,
                     .debug = world_.platform.debug};
};

}  // namespace
}  // namespace ostrel::peers

int main(int count, char** arguments) {
  using namespace ostrel::peers;
  return RunPeer({arguments + 1, arguments + count},
                 [](const std::string& folder) { return std::make_unique<NativeWorld>(folder); });
}
