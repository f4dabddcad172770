// tests/support/ErrorOf.h: what a call fails with.
#pragma once

#include <functional>

#include "values/Error.h"

namespace velkor {

/// The error that a call throws; number 0 and "no error" where there is none.
inline Error ErrorOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const Error& error) {
    return error;
  }
  return {0, "no error"};
}

}  // namespace velkor
