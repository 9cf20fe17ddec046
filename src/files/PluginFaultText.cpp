#include "files/PluginFaultText.h"

#include <algorithm>
#include <iterator>

namespace calder {
namespace {

using Kind = PluginFault::Kind;

// $1: the fault's number, $2: what was expected.
constexpr struct {
  Kind kind;
  const char* japanese;
  const char* english;
} kTexts[] = {
    {Kind::Crashed, "プラグインが異常終了しました（シグナル $1）。", "The plug-in crashed (signal $1)."},
    {Kind::Ended, "プラグインのプロセスが終了しました（状態 $1）。", "The plug-in's process ended (status $1)."},
    {Kind::Hung, "プラグインが $1 秒間応答しませんでした。", "The plug-in did not answer for $1 s."},
    {Kind::NegativeCount, "プラグインが返した点数が不正です: $1", "The plug-in gave a negative number of points: $1"},
    {Kind::OffsetPastEnd, "データの開始位置がファイルの終わりより後です: $1",
     "The data would begin beyond the end of the file: byte $1"},
    {Kind::WrongCount, "プラグインが $2 点のブロックに $1 点を返しました。",
     "The plug-in gave $1 points for a block of $2."},
    {Kind::MorePoints, "プラグインが予告より多くの点を返しました。",
     "The plug-in gave more points than it had announced."},
    {Kind::NotLoaded, "プラグインを読み込めません。", "The plug-in cannot be loaded."},
    {Kind::NoHelper, "プラグインを実行するプロセスを起動できません。",
     "The process that runs plug-ins cannot be started."},
    {Kind::Garbled, "プラグインの応答が不正です。", "The plug-in's answer means nothing."},
};

std::string Filled(std::string text, const char* place, std::int32_t number) {
  if (const std::size_t at = text.find(place); at != std::string::npos) text.replace(at, 2, std::to_string(number));
  return text;
}

} // namespace

std::string PluginFaultText(const PluginFault& fault, Language language) {
  std::string text;
  const auto* const found = std::ranges::find(kTexts, fault.kind, [](const auto& row) { return row.kind; });
  if (found != std::end(kTexts)) {
    text = language == Language::English ? found->english : found->japanese;
    text = Filled(Filled(std::move(text), "$1", fault.number), "$2", fault.expected);
  }
  if (!text.empty() && !fault.text.empty()) text += '\n';
  return text + fault.text;
}

} // namespace calder
