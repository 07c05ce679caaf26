#pragma once

#include "BrimloApp/Settings/CLIInstaller.h"
#include "BrimloApp/Shell/Clock.h"
#include "BrimloCore/Docker/DockerClient.h"

namespace Brimlo {

/// What the model stands on beside the user's home folder. Tests give their own.
struct Surroundings {
    Clock* clock = &Clock::system();
    CLIInstaller::Places cli = CLIInstaller::usualPlaces();
    DockerClient::Places docker = DockerClient::usualPlaces();
};

}  // namespace Brimlo
