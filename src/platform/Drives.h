#pragma once

#include <map>
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

// The drives of a Linux system: C is the root; every optical drive (sr0, sr1 ...), and every disc
// image (ISO 9660, UDF) that is mounted from a file (loop0 ...), gets a letter from D on, in the
// order of their devices. A device keeps its letter for as long as this object lives, also while it
// is gone, because the paths of the program begin with that letter; one that comes later gets the
// next letter. A memory stick is no disc, whatever file system was written to it.
class SystemDrives : public Drives {
  public:
    // The two tables of the system; a test gives files of its own.
    explicit SystemDrives(std::string mounts = "/proc/self/mounts",
                          std::string blockDevices = "/sys/block");
    std::vector<Drive> List() override;

  private:
    char LetterOf(const std::string& device);

    std::string mounts_;
    std::string blockDevices_;
    std::map<std::string, char> letters_;  // device -> its letter
};

}  // namespace larder
