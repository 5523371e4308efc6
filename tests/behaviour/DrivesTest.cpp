#include "platform/Drives.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/TempFolder.h"

namespace larder {
namespace {

// Tables of a machine that we make up.
class DrivesOfAMachine : public testing::Test {
  protected:
    DrivesOfAMachine() {
        folder_.MakeFolder("block");
        Mounts("");
    }

    void Device(const std::string& name) { folder_.MakeFolder("block/" + name); }
    void Mounts(const std::string& lines) { folder_.Write("mounts", lines); }
    std::vector<Drive> List() {
        return SystemDrives(folder_.Native("mounts"), folder_.Native("block")).List();
    }
    // What a drive list of the whole run says where each letter leads: "D=/one E=".
    std::string LettersInThisRun() {
        std::string letters;
        for (const Drive& drive : run_.List()) {
            if (drive.DriveType != Drive::CdRom) continue;
            if (!letters.empty()) letters += ' ';
            letters += std::string(1, drive.DriveLetter) + "=" + drive.MountPoint;
        }
        return letters;
    }

  private:
    test::TempFolder folder_;
    SystemDrives run_{folder_.Native("mounts"), folder_.Native("block")};
};

TEST_F(DrivesOfAMachine, TheRootIsTheFixedDriveC) {
    Mounts("/dev/sda1 / ext4 rw 0 0\nproc /proc proc rw 0 0\n");
    const auto drives = List();
    ASSERT_EQ(drives.size(), 1U);
    EXPECT_EQ(drives[0].DriveLetter, 'C');
    EXPECT_EQ(drives[0].DriveType, Drive::Fixed);
    EXPECT_EQ(drives[0].MountPoint, "/");
}

TEST_F(DrivesOfAMachine, AnOpticalDriveWithoutADiscHasALetterAndNoMountPoint) {
    Device("sda");
    Device("sr0");
    const auto drives = List();
    ASSERT_EQ(drives.size(), 2U);
    EXPECT_EQ(drives[1].DriveLetter, 'D');
    EXPECT_EQ(drives[1].DriveType, Drive::CdRom);
    EXPECT_EQ(drives[1].MountPoint, "");
}

TEST_F(DrivesOfAMachine, AMountedDiscIsFoundInItsDriveAndListedOnce) {
    Device("sr0");
    Mounts("/dev/sr0 /media/cook/DISC iso9660 ro 0 0\n/dev/sr0 /mnt/again iso9660 ro 0 0\n");
    const auto drives = List();
    ASSERT_EQ(drives.size(), 2U);
    EXPECT_EQ(drives[1].MountPoint, "/media/cook/DISC");
}

TEST_F(DrivesOfAMachine, AMountedImageIsADriveOfItsOwn) {
    Mounts("/dev/loop7 /mnt/image udf ro 0 0\n/dev/loop8 /snap/core squashfs ro 0 0\n");
    const auto drives = List();
    ASSERT_EQ(drives.size(), 2U);
    EXPECT_EQ(drives[1].DriveType, Drive::CdRom);
    EXPECT_EQ(drives[1].MountPoint, "/mnt/image");
}

TEST_F(DrivesOfAMachine, AMemoryStickWrittenAsADiscIsNone) {
    Mounts(
        "/dev/sdb1 /media/stick iso9660 ro 0 0\n/dev/sdc /media/whole udf rw 0 0\n"
        "/dev/mapper/sr0 /mnt/mapped iso9660 ro 0 0\n/dev/sram /mnt/ram iso9660 ro 0 0\n"
        "/dev/loop /mnt/loop iso9660 ro 0 0\n");
    EXPECT_EQ(List().size(), 1U);
}

TEST_F(DrivesOfAMachine, AMountedDiscCountsWithoutItsDriveInTheTableOfDevices) {
    Mounts("/dev/sr1 /media/disc iso9660 ro 0 0\n");
    const auto drives = List();
    ASSERT_EQ(drives.size(), 2U);
    EXPECT_EQ(drives[1].DriveType, Drive::CdRom);
    EXPECT_EQ(drives[1].MountPoint, "/media/disc");
}

TEST_F(DrivesOfAMachine, AnAudioDriveWithAnotherFileSystemStaysOptical) {
    Device("sr0");
    Mounts("/dev/sr0 /media/hfs hfsplus ro 0 0\n");
    EXPECT_EQ(List().at(1).MountPoint, "/media/hfs");
}

TEST_F(DrivesOfAMachine, EscapesOfTheMountTableAreDecoded) {
    Mounts("/dev/loop0 /media/My\\040Disc\\134One\\011x iso9660 ro 0 0\n");
    EXPECT_EQ(List().at(1).MountPoint, "/media/My Disc\\One\tx");
}

TEST_F(DrivesOfAMachine, ABackslashWithoutThreeDigitsStays) {
    Mounts("/dev/loop0 /media/a\\04 iso9660 ro 0 0\n");
    EXPECT_EQ(List().at(1).MountPoint, "/media/a\\04");
}

TEST_F(DrivesOfAMachine, LettersFollowTheNumbersOfTheDevices) {
    for (const char* name : {"sr10", "sr2", "sr0", "sram", "sr"})
        Device(name);
    Mounts("/dev/sr10 /ten iso9660 ro 0 0\n/dev/sr2 /two iso9660 ro 0 0\n");
    const auto drives = List();
    ASSERT_EQ(drives.size(), 4U);
    EXPECT_EQ(drives[1].MountPoint, "");
    EXPECT_EQ(drives[2].MountPoint, "/two");
    EXPECT_EQ(drives[2].DriveLetter, 'E');
    EXPECT_EQ(drives[3].MountPoint, "/ten");
    EXPECT_EQ(drives[3].DriveLetter, 'F');
}

TEST_F(DrivesOfAMachine, LettersEndAtZ) {
    for (int i = 0; i < 40; ++i)
        Device("sr" + std::to_string(i));
    const auto drives = List();
    ASSERT_EQ(drives.size(), 24U);
    EXPECT_EQ(drives.back().DriveLetter, 'Z');
}

TEST_F(DrivesOfAMachine, ADriveKeepsItsLetterWhenAnotherImageIsMounted) {
    Mounts("/dev/loop5 /cookbook iso9660 ro 0 0\n");
    EXPECT_EQ(LettersInThisRun(), "D=/cookbook");
    Mounts("/dev/loop5 /cookbook iso9660 ro 0 0\n/dev/loop2 /other udf ro 0 0\n");
    EXPECT_EQ(LettersInThisRun(), "D=/cookbook E=/other");
    Device("sr0");
    EXPECT_EQ(LettersInThisRun(), "D=/cookbook E=/other F=");
}

TEST_F(DrivesOfAMachine, ADriveKeepsItsLetterWhenAnotherImageIsUnmounted) {
    const std::string cookbook = "/dev/loop5 /cookbook iso9660 ro 0 0\n";
    Mounts("/dev/loop2 /other udf ro 0 0\n" + cookbook);
    EXPECT_EQ(LettersInThisRun(), "D=/other E=/cookbook");
    Mounts(cookbook);
    EXPECT_EQ(LettersInThisRun(), "E=/cookbook");
    Mounts("/dev/loop3 /third udf ro 0 0\n" + cookbook);
    EXPECT_EQ(LettersInThisRun(), "E=/cookbook F=/third");
}

TEST_F(DrivesOfAMachine, ADriveThatComesBackHasTheLetterThatItHad) {
    const std::string other = "/dev/loop2 /other udf ro 0 0\n";
    Mounts("/dev/loop5 /cookbook iso9660 ro 0 0\n");
    EXPECT_EQ(LettersInThisRun(), "D=/cookbook");
    Mounts(other);
    EXPECT_EQ(LettersInThisRun(), "E=/other");
    Mounts(other + "/dev/loop5 /again iso9660 ro 0 0\n");
    EXPECT_EQ(LettersInThisRun(), "D=/again E=/other");
}

TEST_F(DrivesOfAMachine, BrokenTablesGiveTheFixedDriveAlone) {
    Mounts("nonsense\n\n/dev/loop0\n/dev/loop0 /mnt\n");
    EXPECT_EQ(List().size(), 1U);
    EXPECT_EQ(SystemDrives("/nonexistent/mounts", "/nonexistent/block").List().size(), 1U);
}

TEST(SystemDrives, OfThisMachineBeginWithC) {
    const auto drives = SystemDrives().List();
    ASSERT_FALSE(drives.empty());
    EXPECT_EQ(drives[0].DriveLetter, 'C');
}

}  // namespace
}  // namespace larder
