#pragma once
// The English message texts of the system for the error codes the program can meet.

#include <cstdint>
#include <map>

#include "platform/os.h"

namespace zk::sim {

std::map<std::uint32_t, Text> EnglishSystemTexts();

}  // namespace zk::sim
