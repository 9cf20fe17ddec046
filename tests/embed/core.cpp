// The engines alone.
#include "libs/wavelb32/wavelb32.h"

int main() {
  const calder::WaveHandle wave = calder::W_AllocMemory(8);
  const bool made = calder::W_MakeDC(wave, 0, 8, 5) == calder::W_SUCCESS && calder::W_GetWaveData(wave, 7, 8) == 5;
  return made ? 0 : 1;
}
