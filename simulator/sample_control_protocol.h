// The control protocol as simulated players come with it.
#pragma once

#include <string>

namespace sontaro::simulator {

/// A venue's control protocol in JSON: a dozen video categories, some audio categories and layouts,
/// two projectors, every other slot empty. Settings that carry nothing are left out.
[[nodiscard]] std::string SampleControlProtocol();

}  // namespace sontaro::simulator
