// The per-user settings: texts filed under a section and a key, shared by all running copies of the program.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace calder {

class SettingsStore {
public:
  virtual ~SettingsStore() = default;
  [[nodiscard]] virtual std::optional<std::string> Get(const std::string& section, const std::string& key) const = 0;
  // False: the store could not be written; the program goes on with what it has.
  virtual bool Set(const std::string& section, const std::string& key, const std::string& value) = 0;
  // Reads and writes one value with no other copy in between; what `change` returns is stored.
  using Change = std::function<std::string(const std::optional<std::string>&)>;
  virtual bool Update(const std::string& section, const std::string& key, const Change& change) = 0;
  // All keys of a section with their values, in the store's order.
  [[nodiscard]] virtual std::vector<std::pair<std::string, std::string>> All(const std::string& section) const = 0;
};

} // namespace calder
