// Sets a flag for a while and puts it back.
#pragma once

namespace calder {

class ScopedFlag {
public:
  explicit ScopedFlag(bool& flag) : flag_(flag), before_(flag) { flag_ = true; }
  ~ScopedFlag() { flag_ = before_; }
  ScopedFlag(const ScopedFlag&) = delete;
  ScopedFlag& operator=(const ScopedFlag&) = delete;

private:
  bool& flag_;
  bool before_;
};

} // namespace calder
