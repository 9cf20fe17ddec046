#include "common/Importer.h"

#include <cmath>
#include <limits>

namespace calder::plugin {

std::int32_t Session::Options(void* session, calder_form* form) {
  auto& self = *static_cast<Session*>(session);
  return Guard(self.host_, [&] {
    self.options_.clear();
    self.text_.clear();
    self.importer_->Describe(self.options_, self.text_);
    self.shown_.clear();
    for (const Option& option : self.options_)
      self.shown_.push_back({sizeof(calder_option), option.kind, option.key.c_str(), option.caption.c_str(),
                             option.choices.c_str(), option.minimum, option.maximum, option.value});
    form->count = static_cast<std::uint32_t>(self.shown_.size());
    form->options = self.shown_.data();
    form->preview = self.text_.c_str();
  });
}

std::int32_t Session::Set(void* session, const char* key, double value) {
  auto& self = *static_cast<Session*>(session);
  return Guard(self.host_, [&] { self.importer_->Set(key, static_cast<int>(value)); });
}

std::int32_t Session::Start(void* session, calder_import* import) {
  auto& self = *static_cast<Session*>(session);
  return Guard(self.host_, [&] {
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    std::int64_t startOffset = 0;
    const std::int64_t points = self.importer_->Start(startOffset);
    if (points > most || startOffset > most)
      throw Refusal(Editor(*self.host_).Pick("ファイルが大きすぎます。", "The file has too many points."));
    import->points = static_cast<std::int32_t>(points);
    import->start_offset = static_cast<std::int32_t>(startOffset);
  });
}

std::int32_t Session::Seek(void* session, std::int32_t startOffset) {
  auto& self = *static_cast<Session*>(session);
  return Guard(self.host_, [&] { self.importer_->Seek(startOffset); });
}

std::int32_t Session::Read(void* session, std::int16_t* codes, std::int32_t* count) {
  auto& self = *static_cast<Session*>(session);
  return Guard(self.host_, [&] {
    *count = static_cast<std::int32_t>(self.importer_->Read({codes, static_cast<std::size_t>(*count)}));
  });
}

const char* Session::Report(void* session) {
  auto& self = *static_cast<Session*>(session);
  self.text_.clear();
  Guard(self.host_, [&] { self.text_ = self.importer_->Report(); });
  return self.text_.c_str();
}

void Session::Close(void* session) {
  delete static_cast<Session*>(session); // made by OpenSession
}

} // namespace calder::plugin
