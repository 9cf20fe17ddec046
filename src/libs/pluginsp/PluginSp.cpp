#include "libs/pluginsp/PluginSp.h"

#include <algorithm>
#include <utility>

namespace calder {

PluginSp::PluginSp(std::string helper, std::string language, Worker& worker, PluginLimits limits)
    : helper_(std::move(helper)), language_(std::move(language)), worker_(worker), limits_(limits),
      catalog_(helper_, limits.identify) {}

std::int16_t PluginSp::OpenPlugin(const std::vector<std::string>& folders, const std::string& pattern,
                                  const std::string& application, std::int32_t most, std::int32_t& found) {
  found = 0;
  if (most < 1 || !pattern.starts_with('*')) return PLUGIN_FAILED;
  worker_.Run(
      [&] { plugins_ = catalog_.Find(folders, pattern.substr(1), application, static_cast<std::size_t>(most)); },
      Worker::Meanwhile::NoUserInput);
  found = static_cast<std::int32_t>(plugins_.size());
  return PLUGIN_SUCCESS;
}

std::int16_t PluginSp::GetPluginName(std::int32_t k, std::span<char, PLUGIN_NAME_BYTES> name,
                                     std::int32_t& length) const {
  std::ranges::fill(name, '\0');
  length = 0;
  if (!Has(k)) return PLUGIN_BAD_INDEX;
  const PluginIdentity& identity = plugins_[static_cast<std::size_t>(k)].identity;
  const std::string_view text = CutText(language_ == "ja" ? identity.japaneseName : identity.name, name.size() - 1);
  std::ranges::copy(text, name.begin());
  length = static_cast<std::int32_t>(text.size());
  return PLUGIN_SUCCESS;
}

std::int16_t PluginSp::GetPluginType(std::int32_t k, std::int32_t& type,
                                     std::span<char, PLUGIN_TYPE_BYTES> extension) const {
  std::ranges::fill(extension, '\0');
  type = 0;
  if (!Has(k)) return PLUGIN_BAD_INDEX;
  std::ranges::copy(CutText(plugins_[static_cast<std::size_t>(k)].identity.extension, extension.size() - 1),
                    extension.begin());
  return PLUGIN_SUCCESS;
}

std::int16_t PluginSp::BeginPlugin(std::int32_t k, std::int32_t& session, ImportRecord& record, const AskOptions& ask) {
  session = 0;
  fault_ = {};
  report_.clear();
  cancelled_ = false;
  if (!Has(k)) {
    Fail({PluginFault::Kind::NotLoaded});
    return PLUGIN_BAD_INDEX;
  }
  process_ = std::make_unique<PluginProcess>(helper_, plugins_[static_cast<std::size_t>(k)].path);
  plugin_ = k;
  batch_ = {};
  if (!Begin(record, ask)) {
    process_.reset();
    return Status();
  }
  session = ++session_;
  return PLUGIN_SUCCESS;
}

bool PluginSp::Begin(ImportRecord& record, const AskOptions& ask) {
  PluginPacket answer;
  const auto path = [&](PluginWriter& writer) {
    writer.Text(language_, language_.size());
    writer.Text(record.path, record.path.size());
  };
  if (!Call(PluginCall::Open, answer, 0, path)) return false;
  PluginForm form;
  if (!CallForForm(PluginCall::Options, form)) return false;
  if (ask && !form.options.empty()) {
    const ChangeOption change = [this](const std::string& key, double value, PluginForm& renewed) {
      return CallForForm(PluginCall::Set, renewed, [&](PluginWriter& writer) {
        writer.Text(key, key.size());
        writer.Number(value);
      });
    };
    if (!ask(form, change)) return Fail({PluginFault::Kind::Cancelled});
    if (process_ == nullptr) return false; // it failed meanwhile
  }
  if (!Call(PluginCall::Start, answer)) return false;
  if (answer.number < 0) return Fail({PluginFault::Kind::NegativeCount, answer.number});
  record.points = answer.number;
  record.startOffset = answer.other;
  return true;
}

std::int16_t PluginSp::SeekPlugin(std::int32_t k, std::int32_t session, std::int32_t startOffset) {
  if (!IsOpen(k, session)) return NoSession();
  PluginPacket answer;
  return Call(PluginCall::Seek, answer, startOffset) ? PLUGIN_SUCCESS : Status();
}

std::int16_t PluginSp::ExecutePlugin(std::int32_t k, std::int32_t session, std::int16_t* block, std::int32_t& count,
                                     std::int32_t /*unused*/) {
  const std::int32_t room = std::exchange(count, 0);
  if (!IsOpen(k, session)) return NoSession();
  if (cancelled_) {
    Fail({PluginFault::Kind::Cancelled});
    return PLUGIN_CANCELLED;
  }
  if (batch_.empty()) {
    PluginPacket answer;
    if (!Call(PluginCall::Read, answer)) return Status();
    if (answer.number < 0 || answer.number > kBatchPoints) {
      Fail({PluginFault::Kind::Garbled});
      return PLUGIN_FAILED;
    }
    batch_ = process_->Codes().first(static_cast<std::size_t>(answer.number));
  }
  const auto taken = batch_.first(std::min(
      {static_cast<std::size_t>(std::max(room, 0)), batch_.size(), static_cast<std::size_t>(PLUGIN_BLOCK_POINTS)}));
  std::ranges::copy(taken, block);
  batch_ = batch_.subspan(taken.size());
  count = static_cast<std::int32_t>(taken.size());
  return PLUGIN_SUCCESS;
}

std::int16_t PluginSp::EndPlugin(std::int32_t k, std::int32_t session) {
  if (!IsOpen(k, session)) return NoSession();
  PluginPacket answer;
  bool ended = Call(PluginCall::Report, answer);
  if (ended) {
    report_ = process_->TextOf(answer);
    ended = Call(PluginCall::Close, answer);
  }
  batch_ = {};
  process_.reset();
  return ended ? PLUGIN_SUCCESS : Status();
}

std::int16_t PluginSp::ClosePlugin() {
  batch_ = {};
  process_.reset();
  plugins_.clear();
  return PLUGIN_SUCCESS;
}

bool PluginSp::Call(PluginCall call, PluginPacket& answer, std::int32_t number, const Fill& fill) {
  if (process_ == nullptr) return false;
  if (!process_->Started()) return Fail({PluginFault::Kind::NoHelper});
  PluginWriter writer(process_->Text());
  if (fill) fill(writer);
  if (!writer.Ok()) return Fail({PluginFault::Kind::Garbled});
  const PluginPacket packet{static_cast<std::uint32_t>(call), number, 0, writer.Length()};
  PluginFault fault;
  worker_.Run([&] { fault = process_->Exchange(packet, answer, limits_.call, cancelled_); },
              Worker::Meanwhile::Everything);
  return fault.kind == PluginFault::Kind::None || Fail(std::move(fault));
}

bool PluginSp::CallForForm(PluginCall call, PluginForm& form, const Fill& fill) {
  PluginPacket answer;
  if (!Call(call, answer, 0, fill)) return false;
  auto read = ReadForm(process_->TextOf(answer));
  if (!read) return Fail({PluginFault::Kind::Garbled});
  form = *std::move(read);
  return true;
}

// The fault that ended the session, if one did, is still the one to report.
std::int16_t PluginSp::NoSession() {
  if (fault_.kind == PluginFault::Kind::None) fault_.kind = PluginFault::Kind::Garbled;
  return PLUGIN_NO_SESSION;
}

bool PluginSp::Fail(PluginFault fault) {
  fault_ = std::move(fault);
  batch_ = {};
  process_.reset();
  return false;
}

} // namespace calder
