// Which copies of the program run, known by a lock that the system drops when a copy ends, however it ends.
#pragma once

#include "platform/Desktop.h"

namespace calder {

class PosixInstances final : public Instances {
public:
  // lockPath: a file that all copies of this user share. program: the path of the executable.
  PosixInstances(const std::string& lockPath, std::string program);
  ~PosixInstances() override;
  PosixInstances(const PosixInstances&) = delete;
  PosixInstances& operator=(const PosixInstances&) = delete;

  [[nodiscard]] bool OthersRunning() const override { return others_; }
  void StartupFinished() override;
  bool StartCopy(const std::string& file) override;

private:
  int fd_ = -1;
  bool others_ = false;
  std::string program_;
};

} // namespace calder
