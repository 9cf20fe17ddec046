#include "libs/pluginsp/PluginCatalog.h"

#include "libs/pluginsp/PluginProcess.h"

#include <poll.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <set>

namespace calder {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kAtATime = 8;

bool SameFile(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size &&
         a.st_mtim.tv_sec == b.st_mtim.tv_sec && a.st_mtim.tv_nsec == b.st_mtim.tv_nsec &&
         a.st_ctim.tv_sec == b.st_ctim.tv_sec && a.st_ctim.tv_nsec == b.st_ctim.tv_nsec;
}

// Whether the word stands among those that blanks separate.
bool Names(std::string_view words, std::string_view word) {
  const std::string all = ' ' + std::string(words) + ' ';
  return all.find(' ' + std::string(word) + ' ') != std::string::npos;
}

// One plug-in that is being asked.
struct Question {
  Question(const std::string& helper, const std::string& path, Clock::time_point end)
      : process(helper, path), until(end) {}
  PluginProcess process;
  Clock::time_point until;
};

} // namespace

std::vector<PluginCatalog::Candidate> PluginCatalog::Candidates(const std::vector<std::string>& folders,
                                                                const std::string& ending) {
  std::vector<Candidate> found;
  std::set<std::string> names;
  for (const std::string& folder : folders) {
    std::error_code error;
    std::vector<std::filesystem::path> paths;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
      paths.push_back(entry->path());
    std::ranges::sort(paths);
    for (const std::filesystem::path& path : paths) {
      Candidate candidate{path.string()};
      if (candidate.path.ends_with(ending) && ::stat(candidate.path.c_str(), &candidate.state) == 0 &&
          S_ISREG(candidate.state.st_mode) && names.insert(path.filename().string()).second)
        found.push_back(std::move(candidate));
    }
  }
  return found;
}

std::vector<PluginFile> PluginCatalog::Find(const std::vector<std::string>& folders, const std::string& ending,
                                            const std::string& application, std::size_t most) {
  const std::vector<Candidate> candidates = Candidates(folders, ending);
  Ask(candidates);
  std::vector<PluginFile> files;
  for (const Candidate& candidate : candidates) {
    const Known& known = known_[candidate.path];
    if (files.size() < most && known.usable && Names(known.identity.applications, application))
      files.push_back({candidate.path, known.identity});
  }
  return files;
}

// Fills known_ for those that it does not know yet, or whose file has changed.
void PluginCatalog::Ask(const std::vector<Candidate>& candidates) {
  std::map<std::string, std::unique_ptr<Question>> open;
  auto next = candidates.begin();
  while (next != candidates.end() || !open.empty()) {
    for (; next != candidates.end() && open.size() < kAtATime; ++next) {
      Known& known = known_[next->path];
      if (SameFile(known.state, next->state)) continue;
      known = {};
      known.state = next->state;
      auto question = std::make_unique<Question>(helper_, next->path, Clock::now() + limit_);
      if (question->process.Started() && question->process.Send({static_cast<std::uint32_t>(PluginCall::Identify)}))
        open.emplace(next->path, std::move(question));
    }
    std::vector<pollfd> sockets;
    sockets.reserve(open.size());
    for (const auto& [path, question] : open) sockets.push_back({question->process.Socket(), POLLIN, 0});
    constexpr int kLook = 20; // milliseconds
    if (!sockets.empty()) ::poll(sockets.data(), sockets.size(), kLook);
    std::size_t place = 0;
    std::erase_if(open, [&](const auto& entry) {
      const auto& [path, question] = entry;
      if (sockets[place++].revents == 0) return Clock::now() > question->until;
      PluginPacket answer;
      if (question->process.Receive(answer).kind != PluginFault::Kind::None) return true;
      auto identity = ReadIdentity(question->process.TextOf(answer));
      Known& known = known_[path];
      known.usable = identity.has_value();
      if (identity) known.identity = *std::move(identity);
      return true;
    });
  }
}

} // namespace calder
