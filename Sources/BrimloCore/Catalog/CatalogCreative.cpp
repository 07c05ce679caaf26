#include "BrimloCore/Catalog/CatalogCreative.h"

namespace Brimlo::CatalogCreative {

namespace {

// Release 14 of the formatter crashes on tables like these.
// clang-format off

std::vector<CleanupRule> video() {
    return {
        {.id = "fcp.render", .name = "Final Cut Pro render files", .group = "Final Cut Pro",
         .personas = {Persona::video}, .risk = Risk::review,
         .paths = {"~/Movies/*.fcpbundle/*/Render Files"},
         .regenerates = "Rendered again from the original media, which must be at hand.",
         .quitApps = {"Final Cut Pro"}, .confidence = Confidence::unverified},
        {.id = "fcp.optimized", .name = "Final Cut Pro optimized media", .group = "Final Cut Pro",
         .personas = {Persona::video}, .risk = Risk::review,
         .paths = {"~/Movies/*.fcpbundle/*/Transcoded Media/High Quality Media"},
         .regenerates = "Transcoded again from the original media, which must be at hand.",
         .quitApps = {"Final Cut Pro"}, .confidence = Confidence::unverified},
        {.id = "fcp.analysis", .name = "Final Cut Pro analysis files", .group = "Final Cut Pro",
         .personas = {Persona::video}, .risk = Risk::review,
         .paths = {"~/Movies/*.fcpbundle/*/Analysis Files"},
         .regenerates = "Clips are analysed again when a project needs it.",
         .quitApps = {"Final Cut Pro"}, .confidence = Confidence::unverified},
        {.id = "adobe.media-cache", .name = "Adobe media cache", .group = "Adobe Premiere Pro",
         .personas = {Persona::video}, .risk = Risk::rebuild,
         .paths = {"~/Library/Application Support/Adobe/Common/Media Cache Files",
                   "~/Library/Application Support/Adobe/Common/Media Cache"},
         .regenerates = "Audio is conformed and footage indexed again.",
         .quitApps = {"Adobe Premiere Pro", "Adobe After Effects", "Adobe Media Encoder",
                      "Adobe Audition"},
         .confidence = Confidence::unverified},
        {.id = "adobe.ae-disk-cache", .name = "After Effects disk cache",
         .group = "Adobe After Effects",
         .personas = {Persona::video}, .risk = Risk::rebuild,
         .paths = {"~/Library/Caches/Adobe/After Effects/*"},
         .regenerates = "Frames are rendered again for previews.",
         .quitApps = {"Adobe After Effects"}, .confidence = Confidence::unverified},
        {.id = "resolve.cache", .name = "DaVinci Resolve render cache", .group = "DaVinci Resolve",
         .personas = {Persona::video}, .risk = Risk::rebuild,
         .paths = {"~/Movies/CacheClip", "~/Videos/CacheClip"},
         .regenerates = "Clips are rendered again while the timeline plays.",
         .quitApps = {"DaVinci Resolve"}, .confidence = Confidence::unverified},
        {.id = "blender.cache", .name = "Blender cache", .group = "Blender",
         .personas = {Persona::design3D}, .risk = Risk::rebuild,
         .paths = {"~/Library/Caches/Blender",
                   "~/.cache/blender",
                   "~/.var/app/org.blender.Blender/cache/blender"},
         .regenerates = "Asset lists, thumbnails and shaders are prepared again.",
         .quitApps = {"Blender"}, .confidence = Confidence::unverified},
        {.id = "obs.logs", .name = "OBS Studio logs", .group = "OBS Studio",
         .personas = {Persona::video}, .risk = Risk::safe,
         .paths = {"~/Library/Application Support/obs-studio/logs",
                   "~/.config/obs-studio/logs",
                   "~/.var/app/com.obsproject.Studio/config/obs-studio/logs"},
         .regenerates = "OBS writes a log at each start and removes the oldest itself.",
         .quitApps = {"OBS", "OBS Studio"}, .contentsOnly = true, .minAgeDays = 14,
         .confidence = Confidence::unverified},
    };
}

std::vector<CleanupRule> music() {
    return {
        {.id = "logic.caches", .name = "Logic Pro cache", .group = "Logic Pro",
         .personas = {Persona::music}, .risk = Risk::rebuild,
         .paths = {"~/Library/Caches/com.apple.logic10"},
         .regenerates = "Logic looks through its sounds again at the next start.",
         .quitApps = {"Logic Pro", "Logic Pro X"}, .confidence = Confidence::unverified},
        {.id = "garageband.caches", .name = "GarageBand cache", .group = "GarageBand",
         .personas = {Persona::music}, .risk = Risk::rebuild,
         .paths = {"~/Library/Containers/com.apple.garageband10/Data/Library/Caches"},
         .regenerates = "GarageBand fetches its content lists again.",
         .quitApps = {"GarageBand"}, .contentsOnly = true, .confidence = Confidence::unverified},
        {.id = "ableton.caches", .name = "Ableton Live decoding cache", .group = "Ableton Live",
         .personas = {Persona::music}, .risk = Risk::rebuild,
         .paths = {"~/Library/Caches/Ableton"},
         .regenerates = "Compressed samples are decoded again when a set opens.",
         .quitApps = {"Live", "Ableton Live"}, .confidence = Confidence::unverified},
        {.id = "ableton.crash", .name = "Ableton Live crash data", .group = "Ableton Live",
         .personas = {Persona::music}, .risk = Risk::review,
         .paths = {"~/Library/Preferences/Ableton/Live */Crash/*"},
         .regenerates = "Work that could be recovered after a crash is lost.",
         .quitApps = {"Live", "Ableton Live"}, .minAgeDays = 30,
         .confidence = Confidence::unverified},
        {.id = "splice.samples", .name = "Splice sample packs", .group = "Splice",
         .personas = {Persona::music}, .risk = Risk::review,
         .paths = {"~/Splice/sounds/packs/*", "~/Documents/Splice/Samples/packs/*"},
         .regenerates = "Owned samples can be downloaded again, one by one.",
         .quitApps = {"Splice"}, .confidence = Confidence::unverified},
        {.id = "ni.logs", .name = "Native Instruments logs", .group = "Native Instruments",
         .personas = {Persona::music}, .risk = Risk::review,
         .paths = {"~/Library/Logs/Native Instruments"},
         .regenerates = "New logs are written as the programs run.",
         .quitApps = {"Native Access"}, .contentsOnly = true, .minAgeDays = 14,
         .confidence = Confidence::unverified},
    };
}

std::vector<CleanupRule> photo() {
    return {
        {.id = "adobe.camera-raw", .name = "Camera Raw cache", .group = "Adobe Camera Raw",
         .personas = {Persona::photo}, .risk = Risk::rebuild,
         .paths = {"~/Library/Caches/Adobe Camera Raw", "~/Library/Caches/Adobe Camera Raw 2"},
         .regenerates = "Raw photos are decoded again when you edit them.",
         .quitApps = {"Adobe Photoshop", "Adobe Lightroom", "Adobe Bridge"},
         .confidence = Confidence::unverified},
        {.id = "lightroom.previews", .name = "Lightroom Classic previews",
         .group = "Adobe Lightroom",
         .personas = {Persona::photo}, .risk = Risk::rebuild,
         .paths = {"~/Pictures/Lightroom/*[!t] Previews.lrdata"},
         .regenerates = "Drawn again from the originals, which must be at hand.",
         .quitApps = {"Adobe Lightroom Classic"}, .confidence = Confidence::unverified},
        {.id = "captureone.cache", .name = "Capture One app cache", .group = "Capture One",
         .personas = {Persona::photo}, .risk = Risk::rebuild,
         .paths = {"~/Library/Caches/com.captureone.captureone*",
                   "~/Library/Caches/com.phaseone.captureone*"},
         .regenerates = "Capture One loads its pages and resources again.",
         .quitApps = {"Capture One"}, .confidence = Confidence::unverified},
        {.id = "photos.thumbnails", .name = "Thumbnails", .group = "Thumbnails",
         .personas = {Persona::general, Persona::photo}, .risk = Risk::safe,
         .paths = {"~/.cache/thumbnails", "~/.thumbnails"},
         .regenerates = "Drawn again when a folder is shown.",
         .contentsOnly = true, .confidence = Confidence::unverified},
    };
}

std::vector<CleanupRule> design() {
    return {
        {.id = "unity.cache", .name = "Unity package cache", .group = "Unity",
         .personas = {Persona::gamedev}, .risk = Risk::rebuild,
         .paths = {"~/Library/Unity/cache", "~/.config/unity3d/cache"},
         .regenerates = "Packages are downloaded again when a project opens.",
         .quitApps = {"Unity", "Unity Hub"}, .confidence = Confidence::unverified},
        {.id = "unity.hub-logs", .name = "Unity Hub logs", .group = "Unity",
         .personas = {Persona::gamedev}, .risk = Risk::review,
         .paths = {"~/Library/Application Support/UnityHub/logs", "~/.config/UnityHub/logs"},
         .regenerates = "Unity Hub writes a new log at each start. Past ones are lost.",
         .quitApps = {"Unity Hub"}, .contentsOnly = true, .minAgeDays = 14,
         .confidence = Confidence::unverified},
        {.id = "unreal.ddc", .name = "Unreal shared derived data", .group = "Unreal Engine",
         .personas = {Persona::gamedev}, .risk = Risk::rebuild,
         .paths = {"~/Library/Application Support/Epic/UnrealEngine/Common/DerivedDataCache",
                   "~/.config/Epic/UnrealEngine/Common/DerivedDataCache"},
         .regenerates = "Shaders and assets are prepared again, which can take hours.",
         .quitApps = {"UnrealEditor", "UE4Editor"}, .confidence = Confidence::unverified},
        {.id = "figma.cache", .name = "Figma desktop cache", .group = "Figma",
         .personas = {Persona::photo}, .risk = Risk::safe,
         .paths = {"~/Library/Application Support/Figma/Cache",
                   "~/Library/Application Support/Figma/Code Cache",
                   "~/Library/Application Support/Figma/GPUCache",
                   "~/Library/Application Support/Figma/DesktopProfile/v*/Cache",
                   "~/Library/Application Support/Figma/DesktopProfile/v*/Code Cache",
                   "~/Library/Application Support/Figma/DesktopProfile/v*/GPUCache"},
         .regenerates = "Figma loads its editor and pictures again.",
         .quitApps = {"Figma"}, .confidence = Confidence::unverified},
    };
}

// clang-format on

}  // namespace

const std::vector<CleanupRule>& all() {
    static const std::vector<CleanupRule> kRules = [] {
        std::vector<CleanupRule> rules;
        for (const auto& part : {video(), music(), photo(), design()}) {
            rules.insert(rules.end(), part.begin(), part.end());
        }
        return rules;
    }();
    return kRules;
}

}  // namespace Brimlo::CatalogCreative
