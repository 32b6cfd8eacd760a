// A disk of some speed.
#pragma once

namespace sontaro::bench {

/// As long as it lives, no file is read faster than so many bytes a second by this process, whoever
/// in it reads. One at a time.
class SlowDisk {
   public:
    explicit SlowDisk(double bytesPerSecond);
    ~SlowDisk();
    SlowDisk(const SlowDisk&) = delete;
    SlowDisk& operator=(const SlowDisk&) = delete;
};

}  // namespace sontaro::bench
