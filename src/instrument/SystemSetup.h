// What the System Setup dialog shows and decides, without a window: the lists of the chosen model, the choices in them,
// and what OK and a model change do to the settings record.
//
// It edits the live record. Files and transfers ask this object, never a control.
#pragma once

#include "libs/sysinf32/sysinf32.h"

#include <functional>
#include <string>
#include <vector>

namespace calder {

class clsRegistry;
class ControlPointFinder;
class EditBuffers;
class Program;

class SystemSetup {
public:
  // Takes the parts of the program that it works on; they must outlive this object.
  explicit SystemSetup(Program& program);

  // What the rest of the program does about a change; each may be empty.
  struct Hooks {
    std::function<void()> recordShown;       // the dialog, when it exists, shows the record and the lists again
    std::function<void()> memorySizeChanged; // the view starts again at the whole waveform
    std::function<void()> accepted;          // readouts and view follow the new settings
  };
  void SetHooks(Hooks hooks) { hooks_ = std::move(hooks); }

  struct Interface {
    std::int16_t kind = 0;
    std::string name;
  };

  // The lists, as they stand for the current model, channel and waveform.
  [[nodiscard]] const std::vector<std::string>& Models() const { return modelNames_; }
  [[nodiscard]] const std::vector<std::string>& MemorySizes() const { return memorySizes_; }
  [[nodiscard]] const std::vector<std::string>& Channels() const { return channels_; }
  [[nodiscard]] const std::vector<std::string>& Ranges() const { return ranges_; }
  [[nodiscard]] const std::vector<Interface>& Interfaces() const { return interfaces_; }
  // The chosen entries; -1: none.
  [[nodiscard]] int ModelChoice() const { return modelChoice_; }
  [[nodiscard]] int MemorySizeChoice() const { return memorySizeChoice_; }
  [[nodiscard]] int InterfaceChoice() const;
  // The number of points that the memory-size list shows.
  [[nodiscard]] std::int32_t ShownMemorySize() const;

  // Reads the model names. For start-up, after the database was loaded.
  void LoadModels();
  // Choosing a model: its defaults, its lists, its command tables. An index outside the list changes nothing.
  void ChooseModel(int model);
  // Shows the memory sizes, channels, ranges and interfaces of the record's model without touching the record.
  void RefillLists();
  // Choosing a channel brings its limits and its ranges.
  void ChooseChannel(int channel);
  // Choosing a memory size sets only SizeRatio; it is applied by ApplyMemorySize.
  void ChooseMemorySize(int index);
  // The memory size becomes that one when the model offers it; else it stays.
  void KeepMemorySize(std::int32_t points);
  // Makes the chosen size the waveform's: grown points are cleared, the view starts again.
  void ApplyMemorySize();
  void ChooseInterface(std::int16_t kind);
  // A kind of the list that the model does not offer becomes the model's first one. The kinds that no list offers stay.
  void FitInterface();
  // A channel or range that the model does not have becomes its last one.
  void FitChannel();
  // Reads the model's four command tables.
  void LoadCommandTables();

  // Asks the waveform whether it has a control-point table and sets the transfer format accordingly.
  void RefreshControlPoints();
  // The converted form is out of date: no control-point table until it is asked for again.
  void ForgetControlPoints();
  [[nodiscard]] bool ControlPointsAvailable() const { return settings_.TransferFormat == 1; }
  // The chosen transfer format: 0 array, 1 control points (only when available).
  [[nodiscard]] int TransferFormatChoice() const { return transferFormatChoice_; }
  void ChooseTransferFormat(int format);

  // A file gave the record: the lists follow it, every setting stays.
  void RecordLoaded();
  // OK: keeps the interface, applies the memory size, ends the undo step.
  void Accept();
  void ShowRecord() const;

private:
  void RebuildInterfaces();
  void RebuildTransferFormats();
  [[nodiscard]] int SizeIndexOf(std::int32_t points) const;

  SystemInfo& settings_;
  const ModelDatabase& models_;
  EditBuffers& buffers_;
  ControlPointFinder& controlPoints_;
  clsRegistry& registry_;
  std::int16_t& interfaceKind_;
  std::array<CommandTable, 4>& commandTables_;
  std::array<std::int32_t, 4>& commandRows_;
  Hooks hooks_;
  std::vector<std::string> modelNames_;
  std::vector<std::string> memorySizes_;
  std::vector<std::string> channels_;
  std::vector<std::string> ranges_;
  std::vector<Interface> interfaces_;
  int modelChoice_ = -1;
  int memorySizeChoice_ = -1;
  int transferFormatChoice_ = 0;
};

} // namespace calder
