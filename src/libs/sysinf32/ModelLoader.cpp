#include "libs/sysinf32/ModelLoader.h"

#include "libs/sysinf32/ModelParser.h"
#include "libs/sysinf32/TomlDocument.h"
#include "libs/sysinf32/sysinf32.h"

#include <cerrno>
#include <cstdio>
#include <memory>

namespace calder {

namespace {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

// A file's text, in `room`.
std::optional<ModelFault> ReadWholeFile(const std::string& path, std::vector<char>& room, std::string_view& text) {
  errno = 0;
  const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "rb"));
  if (file == nullptr) {
    if (errno == ENOENT || errno == ENOTDIR) return ModelFault{SYS_NO_MODEL_FILE, path, 0, "The file does not exist."};
    return ModelFault{SYS_READ_FAILED, path, 0, "The file cannot be opened."};
  }
  // One byte more than a model file may have: the parser then says that it is too large.
  room.resize(kTomlMaxBytes + 1);
  text = std::string_view(room.data(), std::fread(room.data(), 1, room.size(), file.get()));
  if (std::ferror(file.get()) != 0) return ModelFault{SYS_READ_FAILED, path, 0, "The file cannot be read."};
  return std::nullopt;
}

// The last of `models` against those before it.
std::optional<ModelFault> CheckName(const std::vector<Model>& models, const std::string& path) {
  const Model& model = models.back();
  for (std::size_t i = 0; i + 1 < models.size(); ++i) {
    if (!models[i].Name.starts_with(model.Name)) continue;
    const std::string what = models[i].Name == model.Name ? " is the name of an earlier model."
                                                          : " is the beginning of the earlier name " + models[i].Name +
                                                                ": list the shorter name first.";
    return ModelFault{SYS_BAD_VALUE, path, model.NameLine, "The name " + model.Name + what};
  }
  return std::nullopt;
}

std::optional<ModelFault> LoadAll(const std::string& folder, std::vector<Model>& models) {
  const std::string indexPath = folder + "/index.toml";
  std::vector<char> room;
  std::string_view text;
  std::vector<IndexEntry> entries;
  if (std::optional<ModelFault> fault = ReadWholeFile(indexPath, room, text)) return fault;
  if (std::optional<ModelFault> fault = ParseIndex(text, indexPath, entries)) return fault;
  models.reserve(entries.size());
  for (const IndexEntry& entry : entries) {
    const std::string path = folder + "/" + entry.file;
    if (std::optional<ModelFault> fault = ReadWholeFile(path, room, text)) {
      fault->text += " Line " + std::to_string(entry.line) + " of index.toml lists it.";
      return fault;
    }
    if (std::optional<ModelFault> fault = ParseModel(text, path, models.emplace_back())) return fault;
    if (std::optional<ModelFault> fault = CheckName(models, path)) return fault;
  }
  return std::nullopt;
}

} // namespace

std::optional<ModelFault> LoadModels(const std::string& folder, std::vector<Model>& models) {
  models.clear();
  std::optional<ModelFault> fault = LoadAll(folder, models);
  if (fault) models.clear();
  return fault;
}

} // namespace calder
