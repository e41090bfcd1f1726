// Results in tests.
#pragma once

#include <stdexcept>
#include <string>
#include <tuple>
#include <utility>

#include "host/text/Problem.h"

namespace host {

/// What went wrong; empty when nothing did.
template <typename Value>
std::string Said(const Result<Value>& result) {
  return result ? std::string() : result.Why().English();
}

/// A value that must be there.
template <typename Value>
Value Taken(Result<Value> result) {
  if (!result) throw std::runtime_error(Said(result));
  return std::move(*result);
}

}  // namespace host
