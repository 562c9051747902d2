// The peer over the real platform.
#include "store_peer.h"
#include "windows_world.h"

#include <fcntl.h>
#include <io.h>
#include <memory>
#include <string>
#include <vector>

int wmain(int count, wchar_t** arguments) {
  using namespace ostrel::peers;
  _setmode(_fileno(stdout), _O_BINARY);  // the same line ends as the other peer's
  std::vector<std::string> words;
  for (int i = 1; i < count; ++i) {
    const std::wstring word = arguments[i];
    words.emplace_back();
    for (const wchar_t unit : word) {
      words.back() += static_cast<char>(unit);
    }
  }
  return RunPeer(words, [](const std::string& folder) {
    return std::make_unique<WindowsWorld>(std::wstring(folder.begin(), folder.end()));
  });
}
