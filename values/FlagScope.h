// values/FlagScope.h: sets a flag for as long as an operation runs.
#pragma once

namespace velkor {

/// Sets a flag for as long as it lives, whatever is thrown meanwhile. The flag outlives it.
class FlagScope {
 public:
  explicit FlagScope(bool& flag) : flag_(flag) { flag_ = true; }
  ~FlagScope() { flag_ = false; }
  FlagScope(const FlagScope&) = delete;
  FlagScope& operator=(const FlagScope&) = delete;

 private:
  bool& flag_;
};

}  // namespace velkor
