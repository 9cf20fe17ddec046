// Where the program looks for the files that it only reads.
#pragma once

#include <string>
#include <vector>

namespace calder {

// The user's data folder, the program's own folder, the installed data folder, in this order; without a trailing
// separator. Needs no toolkit, so it can be asked before one starts.
[[nodiscard]] std::vector<std::string> ReadFolders();

// Where the program's own libraries and helper programs are: beside it, and where they are installed.
[[nodiscard]] std::vector<std::string> ModuleFolders();
// Where import plug-ins are: PlugIn in the user's data folder, then in the module folders. Some may be missing.
[[nodiscard]] std::vector<std::string> PluginFolders();

} // namespace calder
