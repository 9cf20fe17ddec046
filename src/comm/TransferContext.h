// What the transfers use of the program, and the interface layer that they go through.
#pragma once

#include "libs/sysinf32/sysinf32.h"

namespace calder {

class clsRegistry;
class EditBuffers;
class ErrMsg;
class IntfcLib;
class Program;
struct Desktop;

// What it refers to must outlive it.
struct TransferContext {
  const Desktop& desktop;
  clsRegistry& registry;
  const ErrMsg& messages;
  SystemInfo& settings; // the live record
  EditBuffers& buffers;
  const ModelDatabase& models;
  const std::array<CommandTable, 4>& commandTables;
  const std::array<std::int32_t, 4>& commandRows; // of each table
  const std::int16_t& interfaceKind;
  IntfcLib& bus;
};

[[nodiscard]] TransferContext ContextOf(Program& program, IntfcLib& bus);

} // namespace calder
