#include "BrimloCore/Gate/ProtectedRows.h"

#include "BrimloCore/Platform/ProtectedPlaces.h"
#include "BrimloCore/Support/Glob.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/Support/Text.h"

#include <array>
#include <iterator>
#include <map>
#include <utility>

namespace Brimlo {

namespace {

using Rows = std::span<const std::string_view>;

// The rows of every system; `Platform::protectedPlaces` adds those of one system. "~" stands for
// the home folder at the time of the check.

/// Folders that may not go themselves; their contents may.
constexpr std::array<std::string_view, 31> kWhole{
    "/",
    "/System",
    "/Library",
    "/Users",
    "/Applications",
    "/usr",
    "/bin",
    "/sbin",
    "/private",
    "/var",
    "/etc",
    "/opt",
    "/Volumes",
    "/cores",
    "~",
    "~/Library",
    "~/Documents",
    "~/Desktop",
    "~/Downloads",
    "~/Pictures",
    "~/Movies",
    "~/Music",
    "~/Public",
    "~/Applications",
    "~/.ssh",
    "~/.gnupg",
    "~/Library/Keychains",
    "~/Library/Application Support",
    "~/Library/Preferences",
    "~/Library/Mobile Documents",
    "~/Library/CloudStorage",
};

/// Folders and files that may not go, with all their contents.
constexpr std::array<std::string_view, 49> kNever{
    "~/.ssh",
    "~/.gnupg",
    "~/.aws",
    "~/.kube",
    "~/.config/gcloud",
    "~/.azure",
    "~/Library/Keychains",
    "~/.claude/projects",
    "~/.claude/CLAUDE.md",
    "~/.claude/agents",
    "~/.claude/commands",
    "~/.claude/skills",
    "~/.claude.json",
    "~/.password-store",
    "~/.netrc",
    "~/.git-credentials",
    "~/.config/git/credentials",
    "~/.pgpass",
    "~/.my.cnf",
    "~/.mylogin.cnf",
    "~/.config/gh",
    "~/.config/hub",
    "~/.config/glab-cli",
    "~/.config/github-copilot",
    "~/.config/containers",
    "~/.config/doctl",
    "~/.config/hcloud",
    "~/.config/scw",
    "~/.config/linode-cli",
    "~/.config/helm",
    "~/.config/argocd",
    "~/.config/rclone",
    "~/.config/borg",
    "~/.config/restic",
    "~/.config/netlify",
    "~/.config/ngrok",
    "~/.oci",
    "~/.fly",
    "~/.cloudflared",
    "~/.ngrok2",
    "~/.databrickscfg",
    "~/.dbt",
    "~/.boto",
    "~/.s3cfg",
    "~/.passwd-s3fs",
    "~/.terraformrc",
    "~/.vault-token",
    "~/.yarnrc.yml",
    "~/.jupyter",
};

/// Files with credentials among other files of a tool. They never go, and a folder above them does
/// not go while they exist.
constexpr std::array<std::string_view, 25> kFiles{
    "~/.android/adbkey",
    "~/.cache/huggingface/stored_tokens",
    "~/.cache/huggingface/token",
    "~/.cargo/credentials",
    "~/.cargo/credentials.toml",
    "~/.composer/auth.json",
    "~/.config/configstore/firebase-tools.json",
    "~/.config/dart/pub-credentials.json",
    "~/.docker/config.json",
    "~/.docker/contexts",
    "~/.docker/trust",
    "~/.gem/credentials",
    "~/.gradle/gradle.properties",
    "~/.hex/hex.config",
    "~/.kaggle/kaggle.json",
    "~/.m2/settings-security.xml",
    "~/.m2/settings.xml",
    "~/.minikube/ca.key",
    "~/.nuget/NuGet/NuGet.Config",
    "~/.pub-cache/credentials.json",
    "~/.pulumi/credentials.json",
    "~/.pulumi/stacks",
    "~/.subversion/auth",
    "~/.terraform.d/credentials.tfrc.json",
    "~/.wrangler/config",
};

/// Caches that may go although their parents hold credentials.
constexpr std::array<std::string_view, 3> kCarveOuts{
    "~/.kube/cache",
    "~/.kube/http-cache",
    "~/.aws/cli/cache",
};

/// Names of caches in a profile: the program recreates them or does without.
constexpr std::array<std::string_view, 26> kCacheNames{
    "cache",
    "cache_*",
    "caches",
    "cache2",
    "cacheddata",
    "cachestorage",
    "code cache",
    "crash reports",
    "crashpad",
    "dawncache",
    "dawngraphitecache",
    "dawnwebgpucache",
    "gpucache",
    "graphitedawncache",
    "grshadercache",
    "logs",
    "media_cache",
    "optguideondeviceclassifiermodel",
    "optguideondevicemodel",
    "optimization_guide_model_store",
    "safe browsing",
    "shader-cache",
    "shadercache",
    "startupcache",
    "thumbnails",
    "tmp",
};

constexpr std::array<std::string_view, 3> kAgentFolders{"~/.claude", "~/.codex", "~/.gemini"};

constexpr std::array<std::string_view, 3> kAgentFileBeginnings{"settings", "auth", "oauth"};

constexpr std::array<std::string_view, 12> kSecretNames{
    ".env",
    "credentials",
    "credentials.json",
    "auth.json",
    ".git-credentials",
    ".netrc",
    ".npmrc",
    ".pgpass",
    ".pypirc",
    "token.json",
    "wallet.dat",
    ".vault-token",
};

constexpr std::array<std::string_view, 8> kSecretEndings{
    ".p12", ".pfx", ".keychain-db", ".kdbx", ".kdb", ".jks", ".keystore", ".ppk"};

/// The places and the folders above them, each after its parent.
std::vector<ProtectedRows::Node> nodesOf(const std::vector<ProtectedRows::Row>& rows) {
    std::map<std::string, ProtectedRows::Node> byText;
    for (const ProtectedRows::Row& row : rows) {
        ProtectedRows::Node& node = byText[row.text];
        node.isPlace = true;
        node.reason = row.reason;
        std::string_view above = row.text;
        while (above.starts_with("~/")) {
            above = Path::parent(above);
            byText.try_emplace(std::string{above});
        }
    }
    std::vector<ProtectedRows::Node> nodes;
    std::map<std::string_view, std::size_t> numbers;
    for (auto& [text, node] : byText) {
        const auto parent = numbers.find(Path::parent(text));
        const std::size_t number = nodes.size();
        nodes.push_back(
            {text, parent == numbers.end() ? number : parent->second, node.isPlace, node.reason});
        numbers.emplace(text, number);
    }
    return nodes;
}

ProtectedRows rowsOfThisSystem() {
    const Platform::ProtectedPlaces places = Platform::protectedPlaces();
    ProtectedRows rows;
    rows.whole.add(kWhole, ProtectedRows::kHolds);
    rows.whole.add(places.whole, ProtectedRows::kHolds);
    rows.never.add(kNever, ProtectedRows::kCredentials);
    rows.never.add(places.never, ProtectedRows::kCredentials);
    rows.files.add(kFiles, ProtectedRows::kCredentials);
    rows.profiles.add(places.profiles, ProtectedRows::kCredentials);
    rows.agents.add(kAgentFolders, ProtectedRows::kCredentials);
    ProtectedRows::Set own;
    own.add(std::array{StoragePaths::kSupport}, "holds Brimlo's own data");
    std::vector<ProtectedRows::Row> all;
    for (const ProtectedRows::Set* set :
         {&rows.whole, &rows.never, &rows.files, &rows.profiles, &rows.agents, &own}) {
        all.insert(all.end(), set->rows().begin(), set->rows().end());
    }
    for (const Rows list : {Rows{kCarveOuts}, places.carveOuts}) {
        std::ranges::transform(list, std::back_inserter(rows.carveOuts), Text::folded);
    }
    rows.nodes = nodesOf(all);
    return rows;
}

}  // namespace

void ProtectedRows::Set::add(Rows texts, std::string_view reason) {
    for (const std::string_view text : texts) {
        rows_.push_back({std::string{text}, Text::folded(text), reason});
    }
    std::ranges::stable_sort(rows_, {}, &Row::lower);
}

const ProtectedRows& ProtectedRows::ofThisSystem() {
    static const ProtectedRows kRows = rowsOfThisSystem();
    return kRows;
}

bool ProtectedRows::isCacheName(const std::string& component) {
    return std::ranges::any_of(kCacheNames, [&](std::string_view name) {
        return Glob::matches(component, std::string{name});
    });
}

bool ProtectedRows::isSecretName(std::string_view name) {
    return std::ranges::find(kSecretNames, name) != kSecretNames.end() ||
           std::ranges::any_of(
               kSecretEndings, [&](std::string_view ending) { return name.ends_with(ending); }) ||
           name.starts_with("id_");
}

bool ProtectedRows::isAgentFileName(std::string_view name) {
    return std::ranges::any_of(
        kAgentFileBeginnings, [&](std::string_view text) { return name.starts_with(text); });
}

}  // namespace Brimlo
