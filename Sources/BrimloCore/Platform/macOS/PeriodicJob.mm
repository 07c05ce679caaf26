#include "BrimloCore/Platform/PeriodicJob.h"

#include "BrimloCore/Platform/macOS/Cocoa.h"

#include <utility>

#include <unistd.h>

// A job is a property list in the user's LaunchAgents folder (launchd.plist(5)). launchctl(1) loads
// it into the user's graphical session, and launchd reads it by itself at each login.
namespace Brimlo::Platform {

namespace {

std::string session() {
    return "gui/" + std::to_string(getuid());
}

/// Nil for a text that is not UTF-8.
NSString* string(const std::string& text) {
    return [NSString stringWithUTF8String:text.c_str()];
}

NSArray<NSString*>* strings(const std::vector<std::string>& texts) {
    NSMutableArray<NSString*>* const result = [[NSMutableArray alloc] init];
    for (const std::string& text : texts) {
        NSString* const each = string(text);
        if (each == nil) {
            return nil;
        }
        [result addObject:each];
    }
    return result;
}

/// The property list of a job; nil when a text is not UTF-8.
NSDictionary<NSString*, id>* definition(
    const std::string& label, const PeriodicJob::Settings& settings) {
    NSString* const name = string(label);
    NSString* const log = string(settings.log);
    NSArray<NSString*>* const arguments = strings(settings.arguments);
    if (name == nil || log == nil || arguments == nil) {
        return nil;
    }
    // Without "RunAtLoad" the first run comes after the first interval.
    return @{
        string("Label") : name,
        string("ProgramArguments") : arguments,
        string("StartInterval") : @(settings.intervalSeconds),
        string("StandardOutPath") : log,
        string("StandardErrorPath") : log,
    };
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
    @autoreleasepool {
        NSDictionary<NSString*, id>* const job = definition(label_, settings);
        if (job == nil) {
            return std::unexpected(
                Error{.domain = kErrorDomain, .description = "A path is not UTF-8 text"});
        }
        NSError* error = nil;
        NSData* const xml =
            [NSPropertyListSerialization dataWithPropertyList:job
                                                       format:NSPropertyListXMLFormat_v1_0
                                                      options:0
                                                        error:&error];
        if (xml == nil) {
            return std::unexpected(cocoaError(error));
        }
        return std::vector<File>{
            {.path = paths().front(), .text = {static_cast<const char*>(xml.bytes), xml.length}}
        };
    }
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

PeriodicJob::Command PeriodicJob::notification(const std::string& text) {
    return {
        "/usr/bin/osascript",
        "-e",
        "on run words",
        "-e",
        "display notification (item 1 of words) with title \"Brimlo\"",
        "-e",
        "end run",
        text};
}

std::optional<std::string> PeriodicJob::program(std::string_view definition) {
    @autoreleasepool {
        NSData* const bytes = [NSData dataWithBytes:definition.data() length:definition.size()];
        const id job = [NSPropertyListSerialization propertyListWithData:bytes
                                                                 options:NSPropertyListImmutable
                                                                  format:nil
                                                                   error:nil];
        if (![job isKindOfClass:[NSDictionary class]]) {
            return std::nullopt;
        }
        const id arguments =
            static_cast<NSDictionary<NSString*, id>*>(job)[string("ProgramArguments")];
        if (![arguments isKindOfClass:[NSArray class]]) {
            return std::nullopt;
        }
        NSString* program = nil;
        for (const id argument in static_cast<NSArray<id>*>(arguments)) {
            if (![argument isKindOfClass:[NSString class]]) {
                return std::nullopt;
            }
            program = program != nil ? program : static_cast<NSString*>(argument);
        }
        return program != nil ? std::optional{text(program)} : std::nullopt;
    }
}

}  // namespace Brimlo::Platform
