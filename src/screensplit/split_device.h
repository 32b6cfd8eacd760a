// A player of a video wall: its record, and what it says about its outputs.
#pragma once

#include "devices/device_record.h"
#include "link/window_message.h"

namespace sontaro {

/// The block of geometric correction and fusion (command 54) exactly as a player has sent it. All
/// numbers are little-endian; what is not named here is not known.
class SplitDeviceParams {
   public:
    // Where the words stand that are known.
    static constexpr std::size_t kWidth = 40;
    static constexpr std::size_t kHeight = 42;
    static constexpr std::size_t kCorrectionCount = 6489;
    static constexpr std::size_t kScreenCount = 6491;

    SplitDeviceParams() = default;
    explicit SplitDeviceParams(const ParameterBlock& bytes) : bytes_(bytes) {}

    /// Of each output, in pixels.
    [[nodiscard]] std::uint16_t Width() const { return At(kWidth); }
    [[nodiscard]] std::uint16_t Height() const { return At(kHeight); }
    /// 2 for two outputs; any other number means one.
    [[nodiscard]] std::uint16_t ScreenCount() const { return At(kScreenCount); }
    /// Whether fusion or correction has been set up.
    [[nodiscard]] bool IsCorrected() const {
        return At(kCorrectionCount) != 0 || ScreenCount() != 0;
    }
    [[nodiscard]] int Outputs() const { return ScreenCount() == kTwoOutputs ? kTwoOutputs : 1; }
    [[nodiscard]] const ParameterBlock& Raw() const { return bytes_; }

    bool operator==(const SplitDeviceParams&) const = default;

   private:
    static constexpr int kTwoOutputs = 2;

    [[nodiscard]] std::uint16_t At(std::size_t offset) const {
        return static_cast<std::uint16_t>(bytes_[offset] | bytes_[offset + 1] << 8);
    }

    ParameterBlock bytes_{};
};

struct SplitDevice {
    DeviceRecord record;
    SplitDeviceParams params = {};

    bool operator==(const SplitDevice&) const = default;
};

}  // namespace sontaro
