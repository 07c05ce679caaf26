#pragma once

#include <cstdint>
#include <string>

namespace Brimlo {

/// The file that a Docker engine's virtual machine uses as its disk.
struct DockerVMDisk {
    std::string path;
    std::int64_t allocated = 0;  ///< Allocated bytes.
    std::int64_t logical = 0;    ///< Its apparent length; a sparse file.
    std::string runtime;         ///< "Docker Desktop" or "OrbStack".

    bool operator==(const DockerVMDisk&) const = default;
};

}  // namespace Brimlo
