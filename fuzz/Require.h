// What every fuzzer demands of the code under test.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

namespace fuzz {

// Ends the process when the demand is not met, which the fuzzer reports as a finding with the input that led there.
inline void Require(bool isMet, const std::string& demand) {
    if (!isMet) {
        std::fprintf(stderr, "the fuzzer demands: %s\n", demand.c_str());
        std::abort();
    }
}

}  // namespace fuzz
