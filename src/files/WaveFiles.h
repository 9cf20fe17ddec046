// Waveform files: .wdb with the settings, text of codes, text of real numbers. docs/file-formats.md has the layouts.
//
// Readers and writers report a failure to the user themselves and return false; the waveform, the settings and the
// remembered names are then as they were. On success the remembered names follow the path.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace calder {

class EditBuffers;
class ErrMsg;
class File32;
class SystemSetup;
struct RememberedNames;
struct SystemInfo;

class WaveFiles {
public:
  WaveFiles(EditBuffers& buffers, SystemInfo& settings, std::int16_t& interfaceKind, RememberedNames& names,
            File32& fileLibrary, const ErrMsg& messages, SystemSetup& setup)
      : buffers_(buffers), settings_(settings), interfaceKind_(interfaceKind), names_(names), fileLibrary_(fileLibrary),
        messages_(messages), setup_(setup) {}

  // .wdb or text of codes, by extension. A .wdb file ends the undo step, a text file keeps the old waveform as one.
  bool Read_WaveFile(const std::string& path);
  // Text of real numbers.
  bool Read_RealText(const std::string& path);
  // .wdb or text of codes, by extension.
  bool Write_WaveFile(const std::string& path);

  // The record's ModelNo from its model name; the first model when the list has no such name.
  void Resolve_Model(SystemInfo& record) const;

private:
  enum class ModelCheck { Known, Unknown, Unreadable };

  // Of the bytes of a .wdb file.
  [[nodiscard]] ModelCheck Check_WdbModel(std::span<const std::byte> file) const;
  [[nodiscard]] bool ReadWdb(const std::string& path);
  [[nodiscard]] bool ReadIntegerText(const std::string& path);
  [[nodiscard]] std::int32_t Write_Wdb(const std::string& path);
  // Spreads the first n points of the work buffer over the whole memory and makes them the waveform.
  void TakeWork(std::int32_t points);
  void ReportReadFailure() const;
  void RememberNames(const std::string& path);

  EditBuffers& buffers_;
  SystemInfo& settings_;
  std::int16_t& interfaceKind_;
  RememberedNames& names_;
  File32& fileLibrary_;
  const ErrMsg& messages_;
  SystemSetup& setup_;
};

} // namespace calder
