// SPDX-License-Identifier: MIT
#include "platform/linux/displays/I2cDriver.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <linux/i2c-dev.h>
#include <linux/i2c.h>
#include <string>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace lumenvale {

namespace {

constexpr unsigned i2cMajor = 89; // the kernel's documentation, admin-guide/devices.txt

/// The system's verdict on a call that returns how much it has done.
int verdict(ssize_t done, std::size_t expected)
{
    if (done < 0)
        return errno;
    return static_cast<std::size_t>(done) == expected ? 0 : EIO;
}

class KernelI2cDriver final : public I2cDriver {
public:
    explicit KernelI2cDriver(std::filesystem::path devices) : devices(std::move(devices)) {}

    tl::expected<FileDescriptor, int> open(int adapterNumber) override
    {
        const std::filesystem::path path = devices / ("i2c-" + std::to_string(adapterNumber));
        FileDescriptor file(::open(path.c_str(), O_RDWR | O_CLOEXEC));
        if (!file.isOpen())
            return tl::unexpected(errno);
        struct stat record = {};
        if (::fstat(file.get(), &record) != 0)
            return tl::unexpected(errno);
        const bool isAdapter =
            S_ISCHR(record.st_mode) && record.st_rdev == makedev(i2cMajor, static_cast<unsigned>(adapterNumber));
        return isAdapter ? tl::expected<FileDescriptor, int>(std::move(file)) : tl::unexpected(ENODEV);
    }

    int lock(const FileDescriptor& file) override
    {
        return ::flock(file.get(), LOCK_EX | LOCK_NB) == 0 ? 0 : errno;
    }

    int transfer(const FileDescriptor& file, std::span<const I2cMessage> messages) override
    {
        std::array<i2c_msg, 2> list = {};
        if (messages.size() > list.size())
            return EINVAL;
        for (std::size_t i = 0; i < messages.size(); ++i) {
            const I2cMessage& message = messages[i];
            list[i].addr = message.address;
            list[i].flags = message.isRead ? I2C_M_RD : 0;
            list[i].len = static_cast<std::uint16_t>(message.bytes.size());
            list[i].buf = message.bytes.data();
        }
        i2c_rdwr_ioctl_data request = {list.data(), static_cast<std::uint32_t>(messages.size())};
        return verdict(::ioctl(file.get(), I2C_RDWR, &request), messages.size());
    }

    int transferSingle(const FileDescriptor& file, const I2cMessage& message) override
    {
        if (::ioctl(file.get(), I2C_SLAVE, static_cast<unsigned long>(message.address)) != 0)
            return errno;
        const std::size_t size = message.bytes.size();
        return message.isRead ? verdict(::read(file.get(), message.bytes.data(), size), size)
                              : verdict(::write(file.get(), message.bytes.data(), size), size);
    }

private:
    std::filesystem::path devices;
};

} // namespace

std::shared_ptr<I2cDriver> makeI2cDriver(const std::filesystem::path& devices)
{
    return std::make_shared<KernelI2cDriver>(devices);
}

} // namespace lumenvale
