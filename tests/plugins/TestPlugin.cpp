// Plug-ins that misbehave, and a few that do not, in one shared object: the name of its file says which row of the
// table it is. The file that it opens holds a number, the number of points; point i has the code i modulo 30000.
#include "calder_plugin.h"

#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <string_view>

namespace {

enum class Act { Works, Crash, Hang, Refuse, Exit, Hog, Slow };
enum class Place { Nowhere, Entry, Open, Options, Set, Start, Seek, Read, Report, Close };

struct Row {
  std::string_view name; // of the file, without its ending
  Place place = Place::Nowhere;
  Act act = Act::Works;
  std::int32_t points = -1;     // instead of the file's number
  std::int32_t startOffset = 0; // a good one makes the codes begin at it
  std::int32_t lastBlock = 0;   // points that the last block has more than it should
  bool endless = false;         // read goes on after the last point
  std::uint32_t version = CALDER_PLUGIN_VERSION;
  const char* applications = "4410";
  bool options = false;
  int readMilliseconds = 0;
};

constexpr std::int32_t kMost = 2147483647;
constexpr Row kRows[] = {
    {.name = "works"},
    {.name = "crash-entry", .place = Place::Entry, .act = Act::Crash},
    {.name = "hang-entry", .place = Place::Entry, .act = Act::Hang},
    {.name = "wrong-version", .version = CALDER_PLUGIN_VERSION + 1},
    {.name = "other-program", .applications = "441 44100"},
    {.name = "many-programs", .applications = "9999 4410"},
    {.name = "refuse-open", .place = Place::Open, .act = Act::Refuse},
    {.name = "crash-open", .place = Place::Open, .act = Act::Crash},
    {.name = "hang-open", .place = Place::Open, .act = Act::Hang},
    {.name = "slow-open", .place = Place::Open, .act = Act::Slow}, // longer than the limit, but it says so
    {.name = "hog-open", .place = Place::Open, .act = Act::Hog},
    {.name = "crash-options", .place = Place::Options, .act = Act::Crash, .options = true},
    {.name = "crash-set", .place = Place::Set, .act = Act::Crash, .options = true},
    {.name = "options", .options = true},
    {.name = "crash-start", .place = Place::Start, .act = Act::Crash},
    {.name = "negative", .points = -1200},
    {.name = "none", .points = 0},
    {.name = "offset", .startOffset = 3},
    {.name = "past-end", .startOffset = 1000000},
    {.name = "crash-seek", .place = Place::Seek, .act = Act::Crash, .startOffset = 3},
    {.name = "refuse-read", .place = Place::Read, .act = Act::Refuse},
    {.name = "crash-read", .place = Place::Read, .act = Act::Crash},
    {.name = "hang-read", .place = Place::Read, .act = Act::Hang},
    {.name = "exit-read", .place = Place::Read, .act = Act::Exit},
    {.name = "one-short", .lastBlock = -1},
    {.name = "one-too-many", .lastBlock = 1},
    {.name = "negative-block", .lastBlock = -700},
    {.name = "endless", .endless = true},
    {.name = "long", .points = kMost, .readMilliseconds = 1},
    {.name = "crash-report", .place = Place::Report, .act = Act::Crash},
    {.name = "crash-close", .place = Place::Close, .act = Act::Crash},
};

const calder_host* theHost = nullptr;
const Row* row = nullptr;

const Row* FindRow() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&calder_plugin_entry), &info) == 0) return nullptr;
  std::string_view name = info.dli_fname;
  name.remove_prefix(name.rfind('/') + 1);
  name.remove_suffix(std::min(name.size(), std::string_view(".so").size()));
  const auto* found = std::ranges::find(kRows, name, &Row::name);
  return found == std::end(kRows) ? nullptr : found;
}

std::int32_t Do(Place place) {
  if (row->place != place) return CALDER_PLUGIN_OK;
  switch (row->act) {
  case Act::Works: break;
  case Act::Crash: std::abort();
  case Act::Hang:
    while (true) pause();
  case Act::Refuse: theHost->reason(theHost, "It does not please the plug-in."); return CALDER_PLUGIN_FAILED;
  case Act::Exit: _exit(3);
  case Act::Slow:
    for (int i = 0; i < 16; ++i, theHost->progress(theHost, i / 16.0)) usleep(100000);
    break;
  case Act::Hog:
    if (std::malloc(std::size_t{3} << 30) == nullptr) {
      theHost->reason(theHost, "no memory");
      return CALDER_PLUGIN_FAILED;
    }
  }
  return CALDER_PLUGIN_OK;
}

struct File {
  std::int32_t points = 0;
  std::int32_t at = 0;   // the next code
  std::int32_t left = 0; // to deliver
  double step = 1;       // the option
};

std::int32_t Open(const calder_host* host, const char* path, void** session) {
  theHost = host;
  if (const std::int32_t result = Do(Place::Open); result != 0) return result;
  auto* file = new File;
  std::ifstream(path) >> file->points;
  if (row->points != -1) file->points = row->points;
  *session = file;
  return CALDER_PLUGIN_OK;
}

std::int32_t Options(void* session, calder_form* form) {
  static calder_option options[2];
  options[0] = {sizeof(calder_option), CALDER_OPTION_NUMBER, "step", "Step", nullptr, 1, 9, 0};
  options[0].value = static_cast<File*>(session)->step;
  options[1] = {sizeof(calder_option), CALDER_OPTION_TRUTH, "fair", "Fair", nullptr, 0, 0, 1};
  form->count = row->options ? 2 : 0;
  form->options = options;
  form->preview = options[0].value > 1 ? "wide" : "narrow";
  return Do(Place::Options);
}

std::int32_t Set(void* session, const char* key, double value) {
  if (std::strcmp(key, "step") == 0) static_cast<File*>(session)->step = value;
  return Do(Place::Set);
}

std::int32_t Start(void* session, calder_import* import) {
  auto* file = static_cast<File*>(session);
  import->points = file->left = file->points;
  import->start_offset = row->startOffset;
  return Do(Place::Start);
}

std::int32_t Seek(void* session, std::int32_t startOffset) {
  static_cast<File*>(session)->at = startOffset;
  return Do(Place::Seek);
}

std::int32_t Read(void* session, std::int16_t* codes, std::int32_t* count) {
  auto* file = static_cast<File*>(session);
  usleep(static_cast<useconds_t>(row->readMilliseconds) * 1000);
  const std::int32_t block = row->endless ? *count : std::min(*count, file->left);
  for (std::int32_t i = 0; i < block; ++i, file->at += static_cast<std::int32_t>(file->step))
    codes[i] = static_cast<std::int16_t>(file->at % 30000);
  if (file->left <= CALDER_PLUGIN_BLOCK && file->left > 0)
    *count = block + row->lastBlock;
  else
    *count = block;
  file->left -= std::min(block, file->left);
  return file->at > CALDER_PLUGIN_BLOCK ? Do(Place::Read) : CALDER_PLUGIN_OK; // at the second block
}

const char* Report(void* /*session*/) {
  static_cast<void>(Do(Place::Report));
  return row->options ? "said at the end" : nullptr;
}

void Close(void* session) {
  static_cast<void>(Do(Place::Close));
  delete static_cast<File*>(session);
}

} // namespace

extern "C" const calder_plugin* calder_plugin_entry(const calder_host* host) {
  theHost = host;
  row = FindRow();
  if (row == nullptr) return nullptr;
  static_cast<void>(Do(Place::Entry));
  static calder_plugin table;
  table = {sizeof table,
           row->version,
           row->applications,
           row->name.data(),
           "試験|用",
           "num",
           Open,
           Options,
           Set,
           Start,
           Seek,
           Read,
           Report,
           Close};
  return &table;
}
