#include "BrimloCore/Docker/DockerParsing.h"

#include "Support/TempHome.h"

#include <sstream>
#include <utility>

namespace Brimlo {
namespace {

using Texts = std::vector<std::string>;

TEST(DockerParsingTest, ReadsSizes) {
    const std::pair<const char*, std::int64_t> cases[] = {
        {"1.5GB",     1'500'000'000            },
        {"1e+03MB",   1'000'000'000            },
        {"1.2345KB",  1'234                    },
        {"9223372TB", 9'223'372'000'000'000'000},
    };
    for (const auto& [text, bytes] : cases) {
        EXPECT_EQ(DockerParsing::parseSize(text), bytes) << text;
    }
    std::istringstream words{"0B 12 MB 1GiB xGB 1,5GB 1.5.0GB 0x10B infB nanB 1eMB 9223373TB N/A"};
    for (std::string word; words >> word;) {
        EXPECT_EQ(DockerParsing::parseSize(word), 0) << word;
    }
    EXPECT_EQ(DockerParsing::parseSize("") + DockerParsing::parseSize("\n1B"), 0);
}

TEST(DockerParsingTest, ReadsTheSummaryLineByLine) {
    const std::string text =
        "WARNING: something\n"
        "{\"Active\":\"3\",\"Reclaimable\":\"1.2GB (50%)\",\"Size\":\"5.6GB\","
        "\"TotalCount\":\"+12\",\"Type\":\"Images\"}\n\n"
        "{\"Type\":\"Containers\",\"TotalCount\":\"x\",\"Active\":\"-1\",\"Size\":\"\"}\r\n"
        "{\"Type\":\"Local Volumes\",\"TotalCount\":2}\n[]\n{}\n{\"Type\":";
    const std::vector<DockerSummaryRow> rows{
        {"Images",     12, 3,  5'600'000'000, 1'200'000'000},
        {"Containers", 0,  -1, 0,             0            },
        {"",           0,  0,  0,             0            },
    };
    EXPECT_EQ(DockerParsing::parseSummary(text), rows);
}

/// What is read from a document: a line an object, and before them the folders asked for.
Texts objectsIn(const std::string& json) {
    Texts lines;
    const auto objects = DockerParsing::parseObjects(json, [&](const std::string& folder) {
        lines.push_back("exists " + folder);
        return folder == "/here";
    });
    if (!objects) {
        return {objects.error().domain + " " + std::to_string(objects.error().code)};
    }
    for (const DockerObject& object : *objects) {
        lines.push_back(
            object.pseudoPath() + " | " + std::string{rawValue(object.category)} + " | " +
            object.title + " | " + object.detail + " | " + std::to_string(object.size));
    }
    return lines;
}

TEST(DockerParsingTest, OffersOnlyWhatNothingUses) {
    const std::string image = "docker:image:sha256:";
    const std::string anonymous = " | orphanVolumes | anonymous ";
    const std::string unused = " | anonymous volume, no container uses it | ";
    const std::string gone = " · orphaned: project folder is gone | 63";
    const Texts expected{
        "exists /gone",
        "exists /here",
        image +
            "0123456789abcdef | danglingImages | <untagged> 0123456789ab | 2 weeks ago | 120000000",
        image + "e | unusedImages | nginx:<none> |  | 7000",
        image + "f | unusedImages | db:2 |  | 9000",
        image + "sha256:f | danglingImages | <untagged> f |  | 2000",
        "docker:container:9f3c | stoppedContainers | db | pg:16 · Exited (0) 2 days ago" + gone,
        "docker:container:b | stoppedContainers | b |  · dead | 0",
        "docker:container:c | stoppedContainers | c |  · created | 0",
        "docker:volume:0123456789abcdef" + anonymous + "0123456789ab" + unused + "2000000000",
        "docker:volume:short" + anonymous + "short" + unused + "0",
        "docker:volume:pg | orphanVolumes | pg | named volume, no container uses it | 0",
        "docker:buildcache:all | buildCache | Unused build cache | 4 cache records | 7000",
    };
    EXPECT_EQ(objectsIn(Testing::contentOf(BRIMLO_DOCKER_USAGE)), expected);
}

TEST(DockerParsingTest, TakesNothingFromWhatMakesNoSense) {
    const std::string huge = "{\"Size\":\"9000000TB\"}";
    const std::string cache = "docker:buildcache:all | buildCache | Unused build cache | ";
    const std::pair<std::string, Texts> cases[] = {
        {"{\"BuildCache\": [{\"InUse\":\"true\",\"Size\":\"8kB\"}]}",           {}          },
        {"{\"BuildCache\": [{\"Size\":\"0B\"}, {\"Size\":\"x\"}]}",             {}          },
        {"{\"BuildCache\": [" + huge + "," + huge + "]}",
         {cache + "2 cache records | 9000000000000000000"}                                  },
        {"{\"Volumes\": [{\"Name\":\"a\",\"Links\":\"0\"}, \"no object\"]}",    {}          },
        {"{\"Images\": {\"ID\": \"a\"}, \"Volumes\": null, \"BuildCache\": 3}", {}          },
        {"[]",                                                                  {"Docker 1"}},
        {"",                                                                    {"Docker 0"}},
    };
    for (const auto& [json, lines] : cases) {
        EXPECT_EQ(objectsIn(json), lines) << json;
    }
}

}  // namespace
}  // namespace Brimlo
