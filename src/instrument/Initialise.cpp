#include "instrument/Initialise.h"

#include "app/EngValB.h"
#include "app/Program.h"
#include "instrument/SystemSetup.h"
#include "libs/sysinf32/sysinf32.h"

#include <algorithm>
#include <limits>

namespace calder {
namespace {

constexpr const char* kSection = "Sysinfo";
constexpr const char* kAddressKey = "Gpib_Address";
constexpr const char* kModelKey = "sys_no";
constexpr const char* kMemorySizeKey = "memory_width_no";

bool SiblingRuns(const Program& program) {
  const std::vector<std::string> captions = program.desktop.windows.Captions();
  return std::any_of(captions.begin(), captions.end(), [](const std::string& caption) {
    return caption.substr(0, caption.find('\0')).find(kSiblingTitle) != std::string::npos;
  });
}

// The message of a database that could not be loaded, with the place where it went wrong.
std::string DatabaseFault(const Program& program, std::int32_t status) {
  const ModelDatabase& database = program.models;
  const ErrMsg& messages = program.messages;
  const std::string file = "(" + database.SysGetSysErrorFileName() + ")";
  const std::string line = " Line[" + std::to_string(database.SysGetSysErrorLineNo()) + "]";
  // The database knows plain English only; file and line lead there in any language.
  const bool isTold = program.language == Language::English && !database.SysGetSysErrorText().empty();
  const std::string reason = isTold ? "\r" + database.SysGetSysErrorText() : "";
  switch (status) {
  case SYS_NO_MODEL_FILE:
    // Without the list itself there is nothing more to say; a file that it lists has a name.
    if (database.SysGetSysErrorFileName().ends_with("/index.toml")) return messages.MessageText(kMsgNoModelFile);
    return messages.MessageText(kMsgNoModelFile) + file + reason;
  case SYS_READ_FAILED: return messages.MessageText(kMsgModelFileRead) + file;
  case SYS_NO_MEMORY: return messages.MessageText(kMsgNoMemory);
  case SYS_SYNTAX_ERROR: return messages.MessageText(kMsgModelFileSyntax) + file + line + reason;
  case SYS_BAD_VALUE: return messages.MessageText(kMsgModelFileValue) + file + line + reason;
  default: return {};
  }
}

bool LoadDatabase(Program& program) {
  const std::string folder = FindProgramFile(program.desktop.folders.read, kModelFolder);
  const std::int32_t status = program.models.SysInitDeviceInfo(folder);
  const ErrMsg& messages = program.messages;
  if (status < 0) {
    const std::string fault = DatabaseFault(program, status);
    if (!fault.empty()) messages.ErrorBoxText(fault + '\r' + messages.MessageText(kMsgSystemExit));
    return false;
  }
  if (program.models.SysGetDeviceCnt() <= 0) {
    messages.ErrorBoxText(messages.MessageText(kMsgNoModelFile) + messages.MessageText(kMsgSystemExit));
    return false;
  }
  return true;
}

double StoredNumber(const Program& program, const char* key) {
  return LeadingNumber(program.registry.GetSetting(kSection, key));
}

// Model, address and memory size of the last run.
void RestoreLastSettings(Program& program, SystemSetup& setup) {
  SystemInfo& settings = program.settings;
  const std::int32_t count = program.models.SysGetDeviceCnt();
  const double stored = StoredNumber(program, kModelKey);
  const std::int32_t model = stored >= 0 && stored < count ? static_cast<std::int32_t>(stored) : 0;
  program.models.SysGetInitDeviceInfo(model, settings);
  settings.ModelNo = static_cast<std::int16_t>(model);
  settings.ModelName = setup.Models()[static_cast<std::size_t>(model)];
  setup.RefillLists();
  settings.Address = static_cast<std::int16_t>(std::clamp(StoredNumber(program, kAddressKey), -32768.0, 32767.0));
  const double size = std::clamp(StoredNumber(program, kMemorySizeKey), 0.0, 32767.0);
  setup.ChooseMemorySize(static_cast<int>(size));
  setup.ApplyMemorySize();
  settings.MemorySizeNo = static_cast<std::int16_t>(size);
}

} // namespace

bool InitialiseSystem(Program& program, SystemSetup& setup) {
  const ErrMsg& messages = program.messages;
  if (SiblingRuns(program)) {
    messages.ErrorBox(kMsgSiblingRunning);
    return false;
  }
  if (!LoadDatabase(program)) return false;
  setup.LoadModels();
  program.models.SysGetInitDeviceInfo(0, program.settings);
  if (!program.buffers.Allocate()) {
    messages.ErrorBoxText(messages.MessageText(kMsgNoMemory) + messages.MessageText(kMsgSystemExit));
    return false;
  }
  RestoreLastSettings(program, setup);
  SystemInfo& settings = program.settings;
  settings.XUnit = kXUser;
  settings.YUnit = kYUser;
  settings.XUserMin = 0;
  settings.XUserMax = 1;
  settings.YUserMin = -1;
  settings.YUserMax = 1;
  setup.ShowRecord();
  setup.LoadCommandTables();
  return true;
}

void StoreLastSettings(Program& program) {
  const SystemInfo& settings = program.settings;
  program.registry.SetSetting(kSection, kAddressKey, std::to_string(settings.Address));
  program.registry.SetSetting(kSection, kModelKey, std::to_string(settings.ModelNo));
  program.registry.SetSetting(kSection, kMemorySizeKey, std::to_string(settings.MemorySizeNo));
}

} // namespace calder
