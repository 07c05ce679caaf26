#pragma once

#include "BrimloCore/DiskScanner/FileNode.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo {

/// What a finished scan found, compact enough to keep: its large folders.
struct ScanRecord {
    /// A folder that held at least `floor` bytes.
    struct Folder {
        std::size_t parent = 0;      ///< The index of the folder around it; its own for the first.
        std::string name;            ///< Empty for the first.
        std::int64_t size = 0;       ///< Allocated bytes of all below it and its own.
        std::int64_t fileCount = 0;  ///< Files below.
        std::uint64_t inode = 0;     ///< On `device`; 0 when it could not be read.

        bool operator==(const Folder&) const = default;
    };

    /// At most so many folders are kept: in a larger tree the floor rises.
    static constexpr std::size_t kMostFolders = 8192;

    std::string root;  ///< Absolute, as it was scanned.
    std::chrono::sys_seconds time;
    std::int64_t floor = 1;       ///< Folders with fewer bytes are not listed, but the first.
    std::uint64_t device = 0;     ///< That of the root; 0 when it could not be read.
    std::vector<Folder> folders;  ///< The root first, each behind the folder around it.

    bool operator==(const ScanRecord&) const = default;

    /// The record of a tree that was scanned to its end, with the usual options. Reads the
    /// identities of the folders that it lists.
    [[nodiscard]] static ScanRecord of(const FileNode& root, std::chrono::sys_seconds time);

    /// The absolute path of a folder.
    [[nodiscard]] std::string path(std::size_t folder) const;

    /// The bytes of each folder that no listed folder in it holds.
    [[nodiscard]] std::vector<std::int64_t> rests() const;

    /// The content of its file, and the record in such a content. The error is a phrase; memory is
    /// bounded by the length of the bytes.
    [[nodiscard]] std::string encode() const;
    [[nodiscard]] static std::expected<ScanRecord, std::string> decode(std::string_view bytes);

    /// The 64-bit FNV-1a hash of some bytes, the same on every machine.
    [[nodiscard]] static std::uint64_t hash(std::string_view bytes);
};

}  // namespace Brimlo
