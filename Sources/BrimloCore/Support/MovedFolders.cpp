#include "BrimloCore/Support/MovedFolders.h"

#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <optional>
#include <utility>

namespace Brimlo::MovedFolders {

namespace {

struct Row {
    const char* variable;
    std::string_view usual;  ///< Some tools have another place on each system.
};

constexpr auto kRows = std::to_array<Row>({
    {"XDG_CACHE_HOME",           "~/.cache"                        },
    {"XDG_CONFIG_HOME",          "~/.config"                       },
    {"XDG_DATA_HOME",            "~/.local/share"                  },
    {"XDG_STATE_HOME",           "~/.local/state"                  },
    {"ANDROID_USER_HOME",        "~/.android"                      },
    {"BAZELISK_HOME",            "~/.cache/bazelisk"               },
    {"BUN_INSTALL",              "~/.bun"                          },
    {"CABAL_DIR",                "~/.cabal"                        },
    {"CARGO_HOME",               "~/.cargo"                        },
    {"CCACHE_DIR",               "~/.cache/ccache"                 },
    {"CCACHE_DIR",               "~/.ccache"                       },
    {"CCACHE_DIR",               "~/Library/Caches/ccache"         },
    {"COMPOSER_CACHE_DIR",       "~/.cache/composer"               },
    {"COMPOSER_CACHE_DIR",       "~/Library/Caches/composer"       },
    {"CONAN_HOME",               "~/.conan2"                       },
    {"CYPRESS_CACHE_FOLDER",     "~/.cache/Cypress"                },
    {"CYPRESS_CACHE_FOLDER",     "~/Library/Caches/Cypress"        },
    {"DENO_DIR",                 "~/.cache/deno"                   },
    {"DENO_DIR",                 "~/Library/Caches/deno"           },
    {"FLATPAK_USER_DIR",         "~/.local/share/flatpak"          },
    {"GOCACHE",                  "~/.cache/go-build"               },
    {"GOCACHE",                  "~/Library/Caches/go-build"       },
    {"GOMODCACHE",               "~/go/pkg/mod"                    },
    {"GOPATH",                   "~/go"                            },
    {"GRADLE_USER_HOME",         "~/.gradle"                       },
    {"HEX_HOME",                 "~/.hex"                          },
    {"HF_HOME",                  "~/.cache/huggingface"            },
    {"HF_HUB_CACHE",             "~/.cache/huggingface/hub"        },
    {"JULIA_DEPOT_PATH",         "~/.julia"                        },
    {"MAVEN_USER_HOME",          "~/.m2"                           },
    {"MIX_HOME",                 "~/.mix"                          },
    {"NPM_CONFIG_CACHE",         "~/.npm"                          },
    {"npm_config_cache",         "~/.npm"                          },
    {"NUGET_PACKAGES",           "~/.nuget/packages"               },
    {"NVM_DIR",                  "~/.nvm"                          },
    {"OLLAMA_MODELS",            "~/.ollama/models"                },
    {"OPAMROOT",                 "~/.opam"                         },
    {"PIP_CACHE_DIR",            "~/.cache/pip"                    },
    {"PIP_CACHE_DIR",            "~/Library/Caches/pip"            },
    {"PLATFORMIO_CORE_DIR",      "~/.platformio"                   },
    {"PLAYWRIGHT_BROWSERS_PATH", "~/.cache/ms-playwright"          },
    {"PLAYWRIGHT_BROWSERS_PATH", "~/Library/Caches/ms-playwright"  },
    {"PNPM_HOME",                "~/.local/share/pnpm"             },
    {"PNPM_HOME",                "~/Library/pnpm"                  },
    {"POETRY_CACHE_DIR",         "~/.cache/pypoetry"               },
    {"POETRY_CACHE_DIR",         "~/Library/Caches/pypoetry"       },
    {"PRE_COMMIT_HOME",          "~/.cache/pre-commit"             },
    {"PUB_CACHE",                "~/.pub-cache"                    },
    {"PUPPETEER_CACHE_DIR",      "~/.cache/puppeteer"              },
    {"PYENV_ROOT",               "~/.pyenv"                        },
    {"RBENV_ROOT",               "~/.rbenv"                        },
    {"RUSTUP_HOME",              "~/.rustup"                       },
    {"SCCACHE_DIR",              "~/.cache/sccache"                },
    {"SCCACHE_DIR",              "~/Library/Caches/Mozilla.sccache"},
    {"SDKMAN_DIR",               "~/.sdkman"                       },
    {"TORCH_HOME",               "~/.cache/torch"                  },
    {"UV_CACHE_DIR",             "~/.cache/uv"                     },
    {"VAGRANT_HOME",             "~/.vagrant.d"                    },
    {"YARN_CACHE_FOLDER",        "~/.cache/yarn"                   },
    {"YARN_CACHE_FOLDER",        "~/.yarn/berry/cache"             },
    {"YARN_CACHE_FOLDER",        "~/Library/Caches/Yarn"           },
});

/// The folder that a value names, in tilde form; of a list of folders the first.
std::optional<std::string> inHome(std::string_view variable, std::string_view value) {
    if (variable == "GOPATH" || variable == "JULIA_DEPOT_PATH") {
        value = value.substr(0, value.find(':'));
    }
    if (!value.starts_with('/') || value.find_first_of("*?[\\:") != std::string_view::npos) {
        return std::nullopt;
    }
    const std::string folder = Path::standardized(value);
    const auto rest = Path::below(StoragePaths::home(), folder);
    return rest && !rest->empty() ? std::optional{"~/" + std::string{*rest}} : std::nullopt;
}

bool tellsItsUse(const Move& move) {
    const std::string name = Text::lowercased(Path::name(move.folder));
    return name.contains("cache") || name == Text::lowercased(Path::name(move.usual));
}

}  // namespace

std::vector<Move> ofEnvironment() {
    std::vector<Move> moves;
    for (const auto& [variable, usual] : kRows) {
        const char* value = std::getenv(variable);  // NOLINT(concurrency-mt-unsafe): set at start
        auto folder = inHome(variable, value == nullptr ? "" : value);
        if (folder && *folder != usual) {
            moves.push_back({variable, usual, *std::move(folder)});
        }
    }
    return moves;
}

std::vector<std::string> withMoved(std::vector<std::string> paths, const std::vector<Move>& moves) {
    const std::size_t count = paths.size();
    for (std::size_t i = 0; i < count; ++i) {
        for (const Move& move : moves) {
            const auto rest = Path::below(move.usual, paths[i]);
            if (!rest || (rest->empty() && !tellsItsUse(move))) {
                continue;
            }
            std::string path = rest->empty() ? move.folder : Path::join(move.folder, *rest);
            if (std::ranges::find(paths, path) == paths.end()) {
                paths.push_back(std::move(path));
            }
        }
    }
    return paths;
}

}  // namespace Brimlo::MovedFolders
