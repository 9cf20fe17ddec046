// System initialisation: the sibling check, the model database, the waveform buffers, and the settings of the last run.
#pragma once

namespace calder {

// The folder of the model database, in one of the folders that the program reads.
inline constexpr const char* kModelFolder = "models";

class Program;
class SystemSetup;

// False: the program ends; the user was shown why.
[[nodiscard]] bool InitialiseSystem(Program& program, SystemSetup& setup);

// The title that the sibling editor's window begins with.
inline constexpr const char* kSiblingTitle = "Orvo Marlow for XG5530/31";

// What the next start takes up again: bus address, model and memory size.
void StoreLastSettings(Program& program);

} // namespace calder
