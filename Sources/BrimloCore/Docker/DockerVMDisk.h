#pragma once

#include <cstdint>
#include <string>

namespace Brimlo {

/// The file that a Docker engine's virtual machine uses as its disk.
struct DockerVMDisk {
    std::string path;
    std::int64_t allocated = 0;  ///< Bytes that it takes.
    std::int64_t logical = 0;    ///< Its length; far more than it takes, since it has holes.
    std::string runtime;         ///< "Docker Desktop" or "OrbStack".

    bool operator==(const DockerVMDisk&) const = default;
};

}  // namespace Brimlo
