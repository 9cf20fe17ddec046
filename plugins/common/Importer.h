// The C++ side of our own plug-ins: an importer is an object, and one line exports it as the table of calder_plugin.h.
#pragma once

#include "calder_plugin.h"

#include <cstdint>
#include <exception>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace calder::plugin {

// Ends the call under way; the text is the reason that the user reads.
struct Refusal : std::runtime_error {
  using std::runtime_error::runtime_error;
};

struct Option {
  std::uint32_t kind = CALDER_OPTION_TRUTH;
  std::string key;
  std::string caption;
  std::string choices{}; // of a choice, a line feed between two
  double minimum = 0;
  double maximum = 0;
  double value = 0;
};

// What is common to all: the editor, and texts in its language.
class Editor {
public:
  explicit Editor(const calder_host& host) : host_(host) {}
  [[nodiscard]] std::string Pick(const char* japanese, const char* english) const {
    return std::string_view(host_.language) == "ja" ? japanese : english;
  }
  void Progress(double fraction) const { host_.progress(&host_, fraction); }

private:
  const calder_host& host_;
};

// One open file. Every call may throw a Refusal, and std::bad_alloc.
class Importer {
public:
  virtual ~Importer() = default;
  virtual void Describe(std::vector<Option>& options, std::string& preview) = 0;
  virtual void Set(std::string_view key, int value) = 0;
  // The number of points; startOffset: in bytes, 0 as it comes.
  virtual std::int64_t Start(std::int64_t& startOffset) = 0;
  virtual void Seek(std::int32_t /*startOffset*/) {}
  // As many points as there are, up to the room.
  virtual std::size_t Read(std::span<std::int16_t> codes) = 0;
  virtual std::string Report() { return {}; }
};

// What the table's calls work on.
class Session {
public:
  Session(const calder_host* host, std::unique_ptr<Importer> importer) : host_(host), importer_(std::move(importer)) {}

  // Does the work; an exception becomes the reason and CALDER_PLUGIN_FAILED.
  template <typename Work>
  static std::int32_t Guard(const calder_host* host, Work work) {
    try {
      work();
      return CALDER_PLUGIN_OK;
    } catch (const std::bad_alloc&) {
      host->reason(host, Editor(*host).Pick("メモリが不足しています。", "There is not enough memory.").c_str());
    } catch (const std::exception& refusal) {
      host->reason(host, refusal.what());
    }
    return CALDER_PLUGIN_FAILED;
  }

  static std::int32_t Options(void* session, calder_form* form);
  static std::int32_t Set(void* session, const char* key, double value);
  static std::int32_t Start(void* session, calder_import* import);
  static std::int32_t Seek(void* session, std::int32_t startOffset);
  static std::int32_t Read(void* session, std::int16_t* codes, std::int32_t* count);
  static const char* Report(void* session);
  static void Close(void* session);

private:
  const calder_host* host_;
  std::unique_ptr<Importer> importer_;
  std::vector<Option> options_;
  std::vector<calder_option> shown_; // options_ as the editor sees them
  std::string text_;                 // the preview or the report
};

template <typename Kind>
std::int32_t OpenSession(const calder_host* host, const char* path, void** session) {
  return Session::Guard(host, [&] { *session = new Session(host, std::make_unique<Kind>(Editor(*host), path)); });
}

} // namespace calder::plugin

// Kind: an Importer made from an Editor and a path.
#define CALDER_EXPORT_IMPORTER(Kind, japanese, english, extension)                                                     \
  extern "C" const calder_plugin* calder_plugin_entry(const calder_host* /*host*/) {                                   \
    using calder::plugin::Session;                                                                                     \
    static const calder_plugin table = {sizeof(calder_plugin),                                                         \
                                        CALDER_PLUGIN_VERSION,                                                         \
                                        "4410",                                                                        \
                                        english,                                                                       \
                                        japanese,                                                                      \
                                        extension,                                                                     \
                                        calder::plugin::OpenSession<Kind>,                                             \
                                        Session::Options,                                                              \
                                        Session::Set,                                                                  \
                                        Session::Start,                                                                \
                                        Session::Seek,                                                                 \
                                        Session::Read,                                                                 \
                                        Session::Report,                                                               \
                                        Session::Close};                                                               \
    return &table;                                                                                                     \
  }
