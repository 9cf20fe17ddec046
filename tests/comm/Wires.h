// What goes over each bus for one thing that a transfer does, as calls of the bus library.
#pragma once

#include "app/Program.h"

#include <cstdio>
#include <string>
#include <vector>

namespace calder {

using Lines = std::vector<std::string>;

inline std::string InQuotes(const std::string& bytes) {
  std::string text = "\"";
  for (const char c : bytes) {
    char hex[8];
    std::snprintf(hex, sizeof hex, "\\x%02x", static_cast<unsigned>(static_cast<unsigned char>(c)));
    if (c == '\n')
      text += "\\n";
    else if (c == '\r')
      text += "\\r";
    else if (c == '"' || c == '\\')
      (text += '\\') += c;
    else if (c >= ' ' && c <= '~')
      text += c;
    else
      text += hex;
  }
  return text + '"';
}

class Wire {
public:
  explicit Wire(int address) : address_(address) {}
  virtual ~Wire() = default;
  virtual void Open() = 0;
  virtual void Put(const std::string& text) = 0; // with the terminator of the moment
  virtual void Get() = 0;
  virtual void Block(const std::string& header, const std::string& bytes) = 0;
  virtual void Close() = 0;
  virtual void LongLimit() = 0; // 30 s
  Lines lines;

protected:
  void Add(const std::string& line) { lines.push_back(line); }
  std::string A() const { return std::to_string(address_); }
  int address_;
  std::string end_ = "\n"; // CR LF behind a block
};

class NiWire final : public Wire {
public:
  using Wire::Wire;
  void Open() override {
    for (const char* line : {"ibask(0, 1)", "ibfind(\"GPIB0\")", "ibconfig(0, 7, 0)", "ibsic(0)", "ibsre(0, 1)",
                             "ibeos(0, 5130)", "ibeot(0, 1)", "ibtmo(0, 10)", "ibtmo(0, 11)", "ibtmo(0, 11)",
                             "ibsic(0)", "ibsre(0, 1)", "ibcmd(0, \"\\x11\")"})
      Add(line);
    Command(std::string("?") + static_cast<char>(32 + address_) + '\x04');
    Add("ibeot(0, 1)");
    Add("ibeos(0, 5130)");
  }
  void Put(const std::string& text) override {
    Listen();
    Add("ibwrt(0, " + InQuotes(text + end_) + ")");
  }
  void Get() override {
    Command(std::string("_?") + static_cast<char>(64 + address_) + ' ');
    Add("ibrd(0, 256)");
  }
  void LongLimit() override { Add("ibtmo(0, 14)"); }
  void Block(const std::string&, const std::string& bytes) override {
    Add("ibeot(0, 0)");
    Add("ibeos(0, 0)");
    Listen();
    for (std::size_t at = 0; at + 2 < bytes.size(); at += 512)
      Add("ibwrt(0, " + InQuotes(bytes.substr(at, std::min<std::size_t>(512, bytes.size() - 2 - at))) + ")");
    Add("ibeot(0, 1)");
    Add("ibwrt(0, " + InQuotes(bytes.substr(bytes.size() - 2)) + ")");
    Add("ibeos(0, 5130)");
    end_ = "\r\n";
  }
  void Close() override {
    for (const char* line : {"ibeot(0, 1)", "ibeos(0, 5130)", "ibsre(0, 0)", "ibsre(0, 0)"}) Add(line);
  }

private:
  void Command(const std::string& bytes) { Add("ibcmd(0, " + InQuotes(bytes) + ")"); }
  void Listen() { Command(std::string("_?@") + static_cast<char>(32 + address_)); }
};

class KiWire final : public Wire {
public:
  using Wire::Wire;
  void Open() override {
    for (const char* line :
         {"_ieee_board_present()", "_ieee_initialize(0, 0)", "_ieee_transmit(\"IFC\")", "_ieee_transmit(\"REN\")",
          "_ieee_setinputEOS(10)", "_ieee_settimeout(330)", "_ieee_settimeout(1045)", "_ieee_settimeout(1045)",
          "_ieee_transmit(\"IFC\")", "_ieee_transmit(\"REN\")", "_ieee_transmit(\"LLO\")"})
      Add(line);
    Words("UNL LISTEN " + A() + " SDC");
    Add("_ieee_setinputEOS(10)");
  }
  void Put(const std::string& text) override {
    Words("UNT UNL TALK MTA LISTEN " + A());
    Words("DATA '" + text + "' EOI " + (end_ == "\n" ? " 10" : " 13 10"));
  }
  void Get() override {
    Words("UNT UNL LISTEN MLA TALK " + A());
    Add("_ieee_receive(1024)");
  }
  void LongLimit() override { Add("_ieee_settimeout(30030)"); }
  void Block(const std::string&, const std::string& bytes) override {
    Add("_ieee_setinputEOS(0)");
    Words("UNT UNL TALK MTA LISTEN " + A());
    for (std::size_t at = 0; at + 2 < bytes.size(); at += 512)
      Array(bytes.substr(at, std::min<std::size_t>(512, bytes.size() - 2 - at)), "0");
    Array(bytes.substr(bytes.size() - 2), "1");
    Add("_ieee_setinputEOS(10)");
    end_ = "\r\n";
  }
  void Close() override {
    Add("_ieee_setinputEOS(10)");
    Words("REN");
    Words("UNL LISTEN " + A() + " GTL");
    Words("UNL LISTEN " + A() + " GTL");
  }

private:
  void Words(const std::string& words) { Add("_ieee_transmit(" + InQuotes(words) + ")"); }
  void Array(const std::string& bytes, const char* mark) { Add("_ieee_tarray(" + InQuotes(bytes) + ", " + mark + ")"); }
};

class Usb488Wire final : public Wire {
public:
  using Wire::Wire;
  void Open() override {
    Add("ibask(0, 1)");
    Add("UsbInitialize()");
    for (const char* call : {"OpenDevice", "SetIFC", "EnableRemote"}) Add("Usb" + std::string(call) + "(" + A() + ")");
    Add("UsbSetTimeout(" + A() + ", 1000)");
    for (const char* call : {"SetIFC", "EnableRemote", "SendLLO", "DevClear"})
      Add("Usb" + std::string(call) + "(" + A() + ")");
  }
  void Put(const std::string& text) override { Add("UsbSendTextData(" + A() + ", " + InQuotes(text + end_) + ", 1)"); }
  void Get() override { Add("UsbReceiveTextData(" + A() + ", 1024)"); }
  void LongLimit() override { Add("UsbSetTimeout(" + A() + ", 30000)"); }
  void Block(const std::string&, const std::string& bytes) override {
    Add("UsbSendBinary(" + A() + ", " + InQuotes(bytes) + ", 1)");
    end_ = "\r\n";
  }
  void Close() override {
    for (const char* call : {"EnableLocal", "EnableLocal", "CloseDevice"})
      Add("Usb" + std::string(call) + "(" + A() + ")");
    Add("UsbFinalize()");
  }
};

class TmcWire final : public Wire {
public:
  explicit TmcWire(std::string resource) : Wire(0), resource_(std::move(resource)) {}
  void Open() override {
    Add("viOpenDefaultRM()");
    Add("viOpen(1, " + InQuotes(resource_) + ", 0, 0)");
    Limit(1000);
    Add("viGpibControlREN(2, 1)");
    Add("viGpibControlREN(2, 5)");
    Add("viClear(2)");
    Add("viSetAttribute(2, 0x3fff0016, 1)");
    Terminator();
  }
  void Put(const std::string& text) override { Add("viWrite(2, " + InQuotes(text + end_) + ")"); }
  void Get() override { Add("viRead(2, 1024)"); }
  void LongLimit() override { Limit(30000); }
  void Block(const std::string& header, const std::string& bytes) override {
    Limit(30000);
    const std::string count = std::to_string(bytes.size());
    Add("viWrite(2, " + InQuotes(header + "#" + std::to_string(count.size()) + count) + ")");
    Add("viWriteFromFile(2, " + InQuotes(bytes) + ")");
    Put("*ESR?"); // the instrument has taken the block
    Get();
    Limit(1000);
    Terminator();
    end_ = "\r\n";
  }
  void Close() override {
    Add("viSetAttribute(2, 0x3fff0016, 1)");
    Terminator();
    for (const char* line : {"viGpibControlREN(2, 2)", "viGpibControlREN(2, 2)", "viClose(2)", "viClose(1)"}) Add(line);
  }

private:
  void Limit(int milliseconds) { Add("viSetAttribute(2, 0x3fff001a, " + std::to_string(milliseconds) + ")"); }
  void Terminator() {
    Add("viSetAttribute(2, 0x3fff0018, 10)");
    Add("viSetAttribute(2, 0x3fff0038, 1)");
  }
  std::string resource_;
};

} // namespace calder
