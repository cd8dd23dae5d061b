// SPDX-License-Identifier: MIT
#include "platform/linux/displays/Sysfs.h"

#include "platform/posix/FileDescriptor.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <charconv>
#include <fcntl.h>
#include <system_error>

namespace lumenvale {

namespace {

constexpr std::size_t attributeLimit = 4096; // sysfs hands out at most a page

bool isDigit(char character) { return character >= '0' && character <= '9'; }
bool isSpace(char character) { return std::isspace(static_cast<unsigned char>(character)) != 0; }

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

std::optional<std::vector<std::uint8_t>> readFile(const std::filesystem::path& file, std::size_t limit)
{
    const FileDescriptor source(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!source.isOpen())
        return std::nullopt;
    std::vector<std::uint8_t> bytes(limit);
    ssize_t count = 0; // the kernel hands an attribute out whole, in one read
    do
        count = ::read(source.get(), bytes.data(), limit);
    while (count < 0 && errno == EINTR);
    if (count < 0)
        return std::nullopt;
    bytes.resize(static_cast<std::size_t>(count));
    return bytes;
}

std::string_view leadingDigits(std::string_view text)
{
    const auto end = std::find_if_not(text.begin(), text.end(), isDigit);
    return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

} // namespace

std::optional<std::string> readAttribute(const std::filesystem::path& file)
{
    const std::optional<std::vector<std::uint8_t>> bytes = readFile(file, attributeLimit);
    if (!bytes)
        return std::nullopt;
    const std::string text(bytes->begin(), bytes->end());
    return std::string(trimmed(text));
}

std::optional<std::int64_t> readNumber(const std::filesystem::path& file)
{
    const std::optional<std::string> text = readAttribute(file);
    return text ? parseNumber(*text) : std::nullopt;
}

int writeNumber(const std::filesystem::path& file, std::int64_t number)
{
    const FileDescriptor target(::open(file.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC));
    if (!target.isOpen())
        return errno;
    const std::string text = std::to_string(number);
    const ssize_t written = ::write(target.get(), text.data(), text.size());
    if (written < 0)
        return errno;
    return static_cast<std::size_t>(written) == text.size() ? 0 : EIO;
}

std::vector<std::uint8_t> readBytes(const std::filesystem::path& file, std::size_t limit)
{
    return readFile(file, limit).value_or(std::vector<std::uint8_t>());
}

std::vector<std::string> entryNames(const std::filesystem::path& directory)
{
    std::vector<std::string> names;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(directory, error), end; !error && entry != end;
         entry.increment(error))
        names.push_back(entry->path().filename().string());
    std::sort(names.begin(), names.end(), naturallyLess);
    return names;
}

std::filesystem::path resolved(const std::filesystem::path& path)
{
    std::error_code error;
    std::filesystem::path result = std::filesystem::canonical(path, error);
    return error ? std::filesystem::path() : result;
}

std::filesystem::path linkTarget(const std::filesystem::path& link)
{
    std::error_code error;
    const std::filesystem::path target = std::filesystem::read_symlink(link, error);
    return error ? std::filesystem::path() : (link.parent_path() / target).lexically_normal();
}

bool isWithin(const std::filesystem::path& path, const std::filesystem::path& ancestor)
{
    if (path.empty() || ancestor.empty())
        return false;
    const auto [left, right] = std::mismatch(ancestor.begin(), ancestor.end(), path.begin(), path.end());
    return left == ancestor.end();
}

bool naturallyLess(std::string_view left, std::string_view right)
{
    while (!left.empty() && !right.empty()) {
        const std::string_view leftDigits = leadingDigits(left);
        const std::string_view rightDigits = leadingDigits(right);
        const bool areNumbers = !leftDigits.empty() && !rightDigits.empty();
        const std::string_view leftPart = areNumbers ? leftDigits : left.substr(0, 1);
        const std::string_view rightPart = areNumbers ? rightDigits : right.substr(0, 1);
        if (leftPart.size() != rightPart.size())
            return leftPart.size() < rightPart.size();
        if (leftPart != rightPart)
            return leftPart < rightPart;
        left.remove_prefix(leftPart.size());
        right.remove_prefix(rightPart.size());
    }
    return left.size() < right.size();
}

std::optional<std::int64_t> parseNumber(std::string_view text)
{
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

} // namespace lumenvale
