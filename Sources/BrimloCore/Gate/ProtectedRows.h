#pragma once

#include "BrimloCore/Support/Path.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo {

/// The rows of the gate's tables: those of every system with those of this one. They don't change
/// while the program runs. Part of `SafetyTables`; used by nothing else.
struct ProtectedRows {
    /// Why a folder that holds a place of a row may not go.
    static constexpr std::string_view kHolds = "holds a protected location";
    static constexpr std::string_view kCredentials = "holds credentials, settings or agent memory";

    struct Row {
        std::string text;
        std::string lower;
        std::string_view reason;  ///< Why a folder that holds it may not go.
    };

    /// Rows in the order of their lower-case texts, so that those above and below a place are found
    /// without a look at all of them.
    class Set {
    public:
        void add(std::span<const std::string_view> texts, std::string_view reason);

        [[nodiscard]] const std::vector<Row>& rows() const { return rows_; }

        [[nodiscard]] bool contains(std::string_view place) const {
            return std::ranges::binary_search(rows_, place, {}, &Row::lower);
        }

        /// Whether `is` holds for what `place` adds to any row that is `place` or above it.
        [[nodiscard]] bool anyAbove(std::string_view place, const auto& is) const {
            for (std::string_view above = place;;) {
                if (contains(above) && is(Path::below(above, place).value_or(""))) {
                    return true;
                }
                const std::size_t slash = above.rfind('/');
                if (slash == std::string_view::npos || above == "/") {
                    return false;
                }
                above = above.substr(0, std::max<std::size_t>(slash, 1));
            }
        }

        [[nodiscard]] bool hasAbove(std::string_view place) const {
            return anyAbove(place, [](std::string_view) { return true; });
        }

        /// Whether `is` holds for any row that is `place` or below it.
        [[nodiscard]] bool anyBelow(std::string_view place, const auto& is) const {
            for (auto row = std::ranges::lower_bound(rows_, place, {}, &Row::lower);
                 row != rows_.end() && row->lower.starts_with(place);
                 ++row) {
                if (Path::below(place, row->lower) && is(*row)) {
                    return true;
                }
            }
            return false;
        }

        [[nodiscard]] bool hasBelow(std::string_view place) const {
            return anyBelow(place, [](const Row&) { return true; });
        }

    private:
        std::vector<Row> rows_;
    };

    /// A place of a row, or a folder above one: below a missing folder no place is looked up.
    struct Node {
        std::string text;
        std::size_t parent;  ///< Its index; a node without a parent has its own.
        bool isPlace = false;
        std::string_view reason;
    };

    Set whole;                           ///< May not go; its contents may.
    Set never;                           ///< May not go, nor anything in it.
    Set files;                           ///< May not go, nor a folder above it while it exists.
    Set profiles;                        ///< May not go, nor anything in it but its caches.
    Set agents;                          ///< Folders of agents, whose settings may not go.
    std::vector<std::string> carveOuts;  ///< Patterns, in lower case, for what may go all the same.
    std::vector<Node> nodes;  ///< The places and the folders above, each after its parent.

    [[nodiscard]] static const ProtectedRows& ofThisSystem();

    /// Whether a component of a path, in lower case, names a cache in a profile.
    [[nodiscard]] static bool isCacheName(const std::string& component);

    /// Whether a file of this name, in lower case, holds a secret wherever it is.
    [[nodiscard]] static bool isSecretName(std::string_view name);

    /// Whether a file of this name, in lower case, in a folder of `agents` may not go.
    [[nodiscard]] static bool isAgentFileName(std::string_view name);
};

}  // namespace Brimlo
