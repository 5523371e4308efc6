#pragma once

#include <string>
#include <vector>

namespace larder {

// A drive as the program sees it.
struct Drive {
    static constexpr int Removable = 1;
    static constexpr int Fixed = 2;
    static constexpr int CdRom = 4;

    char DriveLetter = 'C';
    int DriveType = Fixed;
    std::string MountPoint;  // native; empty when no disc is in the drive
};

// The drives of the machine; the outside world to the program, so a test gives its own.
class Drives {
  public:
    virtual ~Drives() = default;
    // In the order of their letters.
    virtual std::vector<Drive> List() = 0;
};

// The drives of a Linux system: C is the root; every optical drive, and every mounted disc image
// (ISO 9660, UDF), gets a letter from D on, in the order of their devices.
class SystemDrives : public Drives {
  public:
    // The two tables of the system; a test gives files of its own.
    explicit SystemDrives(std::string mounts = "/proc/self/mounts",
                          std::string blockDevices = "/sys/block");
    std::vector<Drive> List() override;

  private:
    std::string mounts_;
    std::string blockDevices_;
};

}  // namespace larder
