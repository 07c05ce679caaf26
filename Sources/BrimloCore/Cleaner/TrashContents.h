#pragma once

#include "BrimloCore/Cleaner/CleanReport.h"
#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Models/Suggestion.h"
#include "BrimloCore/Platform/FileIdentity.h"
#include "BrimloCore/Support/Uuid.h"

#include <chrono>
#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <vector>

namespace Brimlo {

/// What lies in the user's Trashes, whoever put it there.
struct TrashContents {
    struct Item {
        std::string trashPath;
        Platform::FileIdentity identity;
        /// Where it was, absolute; absent when nothing tells a place that it may go back to.
        std::optional<std::string> originalPath;
        std::optional<std::chrono::sys_seconds> date;  ///< When it was moved there, if known.
        std::int64_t size = 0;                         ///< Allocated bytes.
        SharedFiles shared = nullptr;                  ///< What of it may stay when it goes.
        std::optional<Uuid> entryID;  ///< Its entry of the journal, if Brimlo moved it.

        bool operator==(const Item&) const = default;
    };
    std::vector<Item> items;            ///< Newest first.
    std::int64_t bytes = 0;             ///< Of all, a file of several names counted once.
    std::vector<ItemProblem> failures;  ///< Trashes that can't be read.

    /// The items that a person's words mean, each once: a name in the Trash, a path there or the
    /// path where the item was. Fails, with a sentence, for a word of no item or of several.
    [[nodiscard]] std::expected<std::vector<Item>, Error> find(
        const std::vector<std::string>& words) const;
};

}  // namespace Brimlo
