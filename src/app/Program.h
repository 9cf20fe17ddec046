// The application-wide state, in the order in which it comes to life; destroyed in reverse.
//
// It holds no behaviour of its own: each unit takes the members that it needs by reference.
#pragma once

#include "app/ControlPointFinder.h"
#include "app/ConvUnit.h"
#include "app/EditBuffers.h"
#include "app/InterfaceKind.h"
#include "app/Messages.h"
#include "app/PageTable.h"
#include "app/PwfTable.h"
#include "app/Registry.h"
#include "app/RememberedNames.h"
#include "app/SplinePoints.h"
#include "app/ToolNo.h"
#include "app/UsbIds.h"
#include "app/ViewState.h"
#include "platform/Desktop.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace calder {

struct CommandTable;
class Evaluator;
class File32;
class ModelDatabase;

inline constexpr const char* kTitle = "Orvo Calder for XG5530/31";
inline constexpr const char* kApplicationTitle = "Calder";

class Program {
public:
  // With an empty model database.
  explicit Program(const Desktop& desktopServices);
  // database: a loaded one, or one that is being read.
  Program(const Desktop& desktopServices, ModelDatabase database);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

private:
  // The members whose headers only few units need; they include them themselves.
  struct Engines;
  const std::unique_ptr<Engines> engines_;

public:
  const Desktop desktop;
  clsRegistry registry;
  const Language language;
  ErrMsg messages;
  SystemInfo settings;
  ConvUnit units{settings};
  EditBuffers buffers{settings};
  ControlPointFinder controlPoints;
  ViewState view;
  ModelDatabase& models;
  std::array<CommandTable, 4>& commandTables;
  std::array<std::int32_t, 4> commandRows{};
  File32& fileLibrary;
  PageTable pages;
  SplinePoints spline;
  PwfTable functions;
  Evaluator& evaluator;
  std::vector<UsbId> usbIds;
  std::int16_t interfaceKind = kUsbTmc;
  std::string serialNumber;
  RememberedNames names;
  int selectedTool = kToolNone;
  bool formSetup = false; // code is filling a form's controls: their change handlers return at once
};

} // namespace calder
