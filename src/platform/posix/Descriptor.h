// A file descriptor that closes itself.
#pragma once

#include <unistd.h>

#include <utility>

namespace calder {

class Descriptor {
public:
  explicit Descriptor(int fd = -1) : fd_(fd) {}
  ~Descriptor() { static_cast<void>(Close()); }
  Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(fd_, other.fd_);
    return *this;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  [[nodiscard]] bool Valid() const { return fd_ >= 0; }
  [[nodiscard]] int Get() const { return fd_; }
  // False when the system reports only now that something written before was lost (network folders do).
  [[nodiscard]] bool Close() { return fd_ < 0 || ::close(std::exchange(fd_, -1)) == 0; }

private:
  int fd_;
};

} // namespace calder
