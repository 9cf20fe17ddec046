// The plug-ins of some folders: what each says of itself.
//
// A plug-in is asked in a helper process of its own, several at a time; what it said is kept as long as its file stays
// the same, so a second look costs only the reading of the folders. One that does not answer in time, crashes or is of
// another version is left out.
#pragma once

#include "libs/pluginsp/PluginWire.h"

#include <sys/stat.h>

#include <chrono>
#include <map>
#include <string>
#include <vector>

namespace calder {

struct PluginFile {
  std::string path;
  PluginIdentity identity;
};

class PluginCatalog {
public:
  // helper: the program that runs plug-ins. limit: for a plug-in's answer.
  PluginCatalog(std::string helper, std::chrono::milliseconds limit) : helper_(std::move(helper)), limit_(limit) {}

  // The shared objects of the folders whose names end in `ending`, at most `most` of them for `application`: folder by
  // folder, in the order of their names. Of two with one name the first folder's counts. Folders that are missing have
  // none. Blocks at most `limit` for each few plug-ins that do not answer.
  [[nodiscard]] std::vector<PluginFile> Find(const std::vector<std::string>& folders, const std::string& ending,
                                             const std::string& application, std::size_t most);

private:
  struct Known {
    struct stat state {};
    bool usable = false;
    PluginIdentity identity;
  };
  struct Candidate {
    std::string path;
    struct stat state {};
  };

  [[nodiscard]] static std::vector<Candidate> Candidates(const std::vector<std::string>& folders,
                                                         const std::string& ending);
  void Ask(const std::vector<Candidate>& candidates);

  std::string helper_;
  std::chrono::milliseconds limit_;
  std::map<std::string, Known> known_; // by path
};

} // namespace calder
