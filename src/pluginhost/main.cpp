// calder-plugin-host: the process that an import plug-in runs in. The editor starts it; with --try it imports a file in
// the foreground for whoever writes a plug-in.
#include "pluginhost/Serve.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  if (arguments.size() == 1 && !arguments[0].starts_with('-')) return calder::ServePlugin(arguments[0]);
  if (arguments.size() >= 2 && arguments[0] == "--try") {
    calder::TryRequest request{arguments[1], arguments.size() > 2 ? arguments[2] : "", "en", {}};
    const char* language = std::getenv("LANG"); // NOLINT: no other thread runs
    if (language != nullptr && std::string(language).starts_with("ja")) request.language = "ja";
    for (std::size_t i = 3; i < arguments.size(); ++i) request.settings.push_back(arguments[i]);
    return calder::TryPlugin(request);
  }
  std::fprintf(stderr, "Usage: calder-plugin-host --try PLUGIN [FILE [KEY=VALUE ...]]\n");
  return 2;
}
