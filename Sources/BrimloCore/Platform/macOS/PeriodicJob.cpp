#include "BrimloCore/Platform/PeriodicJob.h"

#include "BrimloCore/Platform/macOS/PropertyList.h"

#include <algorithm>
#include <utility>

#include <unistd.h>

// A job is a property list in the user's LaunchAgents (launchd.plist(5)), which launchctl(1) is
// told to load for the user's graphical session and which launchd reads by itself at each login.

namespace Brimlo::Platform {

namespace {

std::string session() {
    return "gui/" + std::to_string(getuid());
}

PropertyList list(const std::vector<std::string>& texts) {
    PropertyList::Array items;
    for (const std::string& text : texts) {
        items.push_back({text});
    }
    return {std::move(items)};
}

}  // namespace

PeriodicJob::PeriodicJob(std::string label, std::string home)
    : label_(std::move(label))
    , folder_(std::move(home) + "/Library/LaunchAgents/") {}

std::vector<std::string> PeriodicJob::paths() const {
    return {folder_ + label_ + ".plist"};
}

std::expected<std::vector<PeriodicJob::File>, Error> PeriodicJob::files(
    const Settings& settings) const {
    if (auto fit = checkFit(settings); !fit) {
        return std::unexpected(std::move(fit.error()));
    }
    // Without "RunAtLoad" the first run comes after the first interval.
    PropertyList::Dictionary definition;
    definition.emplace_back("Label", PropertyList{label_});
    definition.emplace_back("ProgramArguments", list(settings.arguments));
    definition.emplace_back("StartInterval", PropertyList{settings.intervalSeconds});
    definition.emplace_back("StandardOutPath", PropertyList{settings.log});
    definition.emplace_back("StandardErrorPath", PropertyList{settings.log});
    return std::vector<File>{
        {.path = paths().front(), .text = PropertyList{std::move(definition)}.xml()}
    };
}

std::vector<PeriodicJob::Command> PeriodicJob::commands(Moment moment) const {
    const std::string launchctl = "/bin/launchctl";
    switch (moment) {
        case Moment::beforeChange:
            return {
                {launchctl, "bootout", session() + "/" + label_}
            };
        case Moment::afterWriting:
            return {
                {launchctl, "bootstrap", session(), paths().front()}
            };
        case Moment::afterRemoving:
            break;
    }
    return {};
}

std::optional<std::string> PeriodicJob::program(std::string_view definition) {
    const auto job = PropertyList::parse(definition);
    const PropertyList* const found = job ? job->find("ProgramArguments") : nullptr;
    const auto* const words =
        found != nullptr ? std::get_if<PropertyList::Array>(&found->value) : nullptr;
    const auto isText = [](const PropertyList& word) {
        return std::holds_alternative<std::string>(word.value);
    };
    if (words == nullptr || words->empty() || !std::ranges::all_of(*words, isText)) {
        return std::nullopt;
    }
    return std::get<std::string>(words->front().value);
}

}  // namespace Brimlo::Platform
