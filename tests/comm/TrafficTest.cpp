// The settings and the waveform of each kind of model, byte by byte on every bus that it has.
#include "comm/BusFixture.h"
#include "comm/SettingsTransfer.h"
#include "comm/Wires.h"

#include <gmock/gmock.h>

namespace calder::traffic_test {

// Steps stand between bars. "?query" is followed by a read, "#header" is the block, "30" a time limit of 30 s; all else
// is sent as it stands.
struct Talk {
  int model;
  std::vector<InterfaceKind> kinds;
  void (*prepare)(SystemInfo&);
  std::string settings;
  std::string waveform;
  int divisor;
  bool lowByteFirst;
};

const Talk kTalks[] = {
    {0,
     {kNiGpib, kKiGpib, kUsb488, kUsbTmc},
     [](SystemInfo& s) {
       s.Polarity = 4;
       s.Amplitude = 1.5;
       s.Offset = -0.25;
       s.Frequency = 12345.678;
       s.RangeNo = 1;
       s.Output = 0;
     },
     ":SYST:HEAD OFF | ?:SOUR1:SEQ:STAT? | OUTP1:LOAD INFinity | ?*IDN? | ?:SOUR1:FUNC:SHAPE? | :SOUR1:FREQ "
     "12345.678;:SOUR1:VOLT:RANG 1;:OUTP1:POL SIN, INV;:OUTP1:SCAL SIN, PFS;:SOUR1:VOLT 0PK;:SOUR1:VOLT:OFFS "
     "0;:SOUR1:VOLT 1.5PK;:SOUR1:VOLT:OFFS -0.25;:OUTP1 ON | ?*ESR? | ?*ESR?",
     ":SYST:HEAD OFF | ?:SOUR1:SEQ:STAT? | OUTP1:LOAD INFinity | ?*IDN? | ?*ESR? | ?*IDN? | #:TRAC:DATA 5,\"NAME\", | "
     ":SOUR1:FUNC:SHAP USER;:SOUR1:FUNC:USER 5 | ?*ESR? | ?*ESR?",
     1,
     false},
    {1,
     {kNiGpib, kKiGpib, kUsb488, kUsbTmc},
     [](SystemInfo& s) { s.Channel = 1; },
     ":SYST:HEAD OFF | ?:SOUR1:SEQ:STAT? | OUTP1:LOAD INFinity | OUTP2:LOAD INFinity | ?*IDN? | ?:SOUR2:FUNC:SHAPE? | "
     ":INST:SEL 2;:SOUR2:FREQ 1000;:SOUR2:VOLT:RANG 0;:OUTP2:POL SIN, NORM;:OUTP2:SCAL SIN, FS;:SOUR2:VOLT "
     "0PP;:SOUR2:VOLT:OFFS 0;:SOUR2:VOLT 1PP;:SOUR2:VOLT:OFFS 0;:OUTP2 OFF | ?*ESR? | ?*ESR?",
     ":SYST:HEAD OFF | ?:SOUR1:SEQ:STAT? | OUTP1:LOAD INFinity | OUTP2:LOAD INFinity | ?*IDN? | ?*ESR? | ?*IDN? | "
     "#:TRAC:DATA 5,\"NAME\", | :SOUR2:FUNC:SHAP USER;:SOUR2:FUNC:USER 5 | ?*ESR? | ?*ESR?",
     1,
     false},
    {2,
     {kNiGpib, kKiGpib, kUsb488},
     [](SystemInfo& s) { s.Output = 2; },
     ":SYST:HEAD OFF | ?*IDN? | ?:SOUR1:FUNC:SHAPE? | :SOUR1:FREQ 1000;:SOUR1:VOLT:RANG 0;:OUTP1:POL SIN, "
     "NORM;:OUTP1:SCAL SIN, FS;:SOUR1:VOLT 0PP;:SOUR1:VOLT:OFFS 0;:SOUR1:VOLT 1PP;:SOUR1:VOLT:OFFS 0 | ?*ESR? | ?*ESR?",
     ":SYST:HEAD OFF | ?*IDN? | ?*ESR? | ?*IDN? | 30 | :TRAC:POIN 1024;:FORM:BORD NORM;:TRAC:DATA 5,NAME, | # | "
     ":SOUR1:FUNC:SHAP USER;:SOUR1:FUNC:USER 5 | ?*ESR? | ?*ESR?",
     4,
     false},
    {6,
     {kNiGpib, kKiGpib},
     [](SystemInfo& s) {
       s.OffsetOn = 1;
       s.MemoryNo = 2;
     },
     "*CLS;:SYST:HEAD OFF | ?*IDN? | :SOUR1:FREQ 1000;:SOUR1:VOLT:OFFS:STAT ON;:SOUR1:VOLT 0PP;:SOUR1:VOLT:OFFS "
     "0;:SOUR1:VOLT 1PP;:SOUR1:VOLT:OFFS 0;:OUTP1 OFF | ?*ESR? | ?*ESR?",
     "*CLS;:SYST:HEAD OFF | ?*IDN? | ?*ESR? | ?*IDN? | 30 | MEM:MODE BIN;:MEM:SIZE 2048;MEM:DATA 2, | # | "
     ":SOUR1:FUNC:SHAP USER;:SOUR1:FUNC:USER 2 | ?*ESR? | ?*ESR?",
     16,
     true},
    {10,
     {kNiGpib, kKiGpib},
     [](SystemInfo& s) {
       s.Channel = 3;
       s.RangeNo = 1;
       s.OffsetSwitch = 1;
       s.Amplitude = 0.5;
       s.Offset = -1.25;
       s.Output = 0;
     },
     "*CLS | ?*IDN? | ?*ESR? | ?MODE? | :Outp 0 | :Mode ACDC-ADD | ?STAT:OPER:COND? | ?STAT:OPER:COND? | "
     "?STAT:OPER:COND? | ?:VOLT:RANG? | :VOLT:RANG 200 | ?STAT:OPER:COND? | ?STAT:OPER:COND? | ?STAT:OPER:COND? | "
     ":FUNC ARB5 | :VOLT 0.5;:VOLT:OFFS -1.25;:Freq 50 | Outp 1 | ?STAT:OPER:COND? | ?STAT:OPER:COND? | "
     "?STAT:OPER:COND?",
     ":SYST:HEAD OFF | ?*IDN? | ?*ESR? | ?*IDN? | 30 | :TRAC:DATA ARB5, | # | :FUNC ARB5 | ?*ESR? | ?*ESR?",
     1,
     false},
    {21,
     {kNiGpib},
     [](SystemInfo&) {},
     "?*IDN? | FRQ 1000;AMP 0PP;OFS 0;AMP 1PP;OFS 0;OUT OFF | ?*ESR? | *CLS | ?*ESR?",
     "?*IDN? | ?*ESR? | ?*IDN? | 30 | SIZE 1024;BANK 6;DATA 5, | # | FUNC 7 | ?*ESR? | *CLS | ?*ESR?",
     4,
     false},
    {22,
     {kNiGpib},
     [](SystemInfo&) {},
     "?*IDN? | FRQ 1000;AMP 0PP;OFS 0;AMP 1PP;OFS 0;OUT OFF | ?*ESR? | *CLS | ?*ESR?",
     "?*IDN? | ?*ESR? | ?*IDN? | 30 | SIZE 1024;BANK 6;DATA 5, | # | FNC 10 | ?*ESR? | *CLS | ?*ESR?",
     4,
     false},
    {23,
     {kNiGpib},
     [](SystemInfo& s) { s.Output = 0; },
     "?*IDN? | Freq 60;Ampl 0PP;Offs 0;Ampl 0PP;Offs 0 | ?*ESR? | ?*ESR?",
     "?*IDN? | ?*ESR? | ?*IDN? | 30 | Size 4096;Data 5, | # | Wave 6 | Outp 1 | ?*ESR? | ?*ESR?",
     1,
     false}};

struct Traffic : BusFixture {
  [[nodiscard]] std::string Payload(const Talk& talk) const {
    const SystemInfo& settings = program->settings;
    std::string bytes;
    if (settings.ModelNo < 2) { // format word and number of points
      bytes = std::string("\0\0\0\0\0\0", 6) + static_cast<char>(settings.MemorySize >> 8) +
              static_cast<char>(settings.MemorySize);
    }
    const auto codes = W_Lock(program->buffers.Current());
    for (int i = 0; i < settings.MemorySize; ++i) {
      const auto code = std::lrint(static_cast<double>(codes[static_cast<std::size_t>(i)]) / talk.divisor);
      const auto low = static_cast<char>(code & 0xFF);
      const auto high = static_cast<char>((code >> 8) & 0xFF);
      bytes += talk.lowByteFirst ? low : high;
      bytes += talk.lowByteFirst ? high : low;
    }
    return bytes;
  }
  // What the script makes of the wire, with the payload where the block stands.
  Lines Expected(int model, InterfaceKind kind, const std::string& script, const std::string& payload) {
    const Wire& wire = WireOf(kind);
    Lines calls;
    std::string end = "\n"; // CR LF after a block
    const auto add = [&](const Lines& lines, const std::string& text = {}, const std::string& header = {}) {
      const std::pair<std::string, std::string> values[] = {
          {"%t", Shown(text)},
          {"%e", Shown(end)},
          {"%k", end == "\n" ? " 10" : " 13 10"},
          {"%a", std::to_string(model + 1)},
          {"%l", Shown(std::string(1, static_cast<char>(33 + model)))},
          {"%r", Shown(std::string(1, static_cast<char>(65 + model)))},
          {"%h", Shown(header)}};
      for (std::string line : lines) {
        for (const auto& [mark, value] : values) {
          if (const std::size_t at = line.find(mark); at != std::string::npos) line.replace(at, 2, value);
        }
        calls.push_back(line);
      }
    };
    add(wire.open, Resource());
    for (std::size_t from = 0; from < script.size();) {
      const std::size_t to = std::min(script.find(" | ", from), script.size());
      const std::string step = script.substr(from, to - from);
      from = to + 3;
      if (step == "30") {
        add(wire.longLimit);
      } else if (step[0] == '#') {
        const std::string count = std::to_string(payload.size());
        add(wire.beforeBlock, {}, step.substr(1) + "#" + std::to_string(count.size()) + count);
        const std::size_t last = wire.chunk.empty() ? 0 : payload.size() - 2;
        for (std::size_t at = 0; at < last; at += 512)
          add(wire.chunk, payload.substr(at, std::min<std::size_t>(512, last - at)));
        add(wire.last, payload.substr(last));
        end = "\r\n";
      } else {
        const bool query = step[0] == '?';
        add(wire.put, step.substr(query ? 1 : 0));
        if (query) add(wire.get);
      }
    }
    add(wire.close);
    return calls;
  }
};

TEST_F(Traffic, SettingsAndWaveformOfEveryKindOfModelOnEveryBus) {
  for (const Talk& talk : kTalks) {
    for (const InterfaceKind kind : talk.kinds) {
      SCOPED_TRACE("model " + std::to_string(talk.model) + ", kind " + std::to_string(kind));
      sim::Reset();
      Choose(talk.model, kind);
      SystemInfo& settings = program->settings;
      settings.MemoryNo = 5;
      settings.MemoryName = "NAME";
      talk.prepare(settings);
      EXPECT_TRUE(SettingsTransfer(Context()));
      EXPECT_EQ(Calls(), Expected(talk.model, kind, talk.settings, {}));
      ExpectIdle();
      sim::Reset();
      EXPECT_TRUE(TransferWave());
      EXPECT_EQ(Calls(), Expected(talk.model, kind, talk.waveform, Payload(talk)));
      ExpectIdle();
    }
  }
}

TEST_F(Traffic, ControlPointsAndThinnedBlocks) {
  for (const InterfaceKind kind : {kNiGpib, kUsbTmc}) {
    SCOPED_TRACE("kind " + std::to_string(kind));
    Choose(0, kind);
    program->settings.MemoryNo = 5;
    program->settings.MemoryName = "NAME";
    const auto codes = W_Lock(program->buffers.Current());
    for (std::size_t i = 0; i < 1024; ++i) codes[i] = static_cast<std::int16_t>(i);
    setup->RefreshControlPoints();
    sim::Reset();
    EXPECT_TRUE(TransferWave());
    // Two control points, the last one at 1023 / 1024 of the full scale.
    const std::string line("\0\0\0\1\0\0\0\2\0\0\0\0\0\0\0\7\xFE\0\3\xFF", 20);
    EXPECT_EQ(Calls(), Expected(0, kind, kTalks[0].waveform, line));

    setup->ForgetControlPoints();
    setup->ChooseMemorySize(static_cast<int>(setup->MemorySizes().size()) - 2);
    setup->ApplyMemorySize();
    setup->ChooseMemorySize(static_cast<int>(setup->MemorySizes().size()) - 1);
    std::string thinned("\0\0\0\0\0\0\4\0", 8);
    for (std::size_t i = 0; i < 2048; i += 2)
      (thinned += static_cast<char>(codes[i] >> 8)) += static_cast<char>(codes[i]);
    sim::Reset();
    EXPECT_TRUE(TransferWave());
    EXPECT_EQ(Calls(), Expected(0, kind, kTalks[0].waveform, thinned));
    if (kind != kUsbTmc) continue;
    // A model without a header is thinned from the start; this instrument is no such one and says so.
    program->settings.ModelNo = 26;
    desktop.boxes.acceptAll = true;
    sim::Reset();
    EXPECT_FALSE(TransferWave());
    EXPECT_THAT(Calls(), testing::IsSupersetOf(Lines{"viWrite(2, \":TRAC:DATA 5,NAME,#42048\")",
                                                     "viWriteFromFile(2, \"" + Shown(thinned.substr(8)) + "\")"}));
  }
}

} // namespace calder::traffic_test
