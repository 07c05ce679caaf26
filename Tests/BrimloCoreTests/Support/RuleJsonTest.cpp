#include "BrimloCore/Support/RuleJson.h"

#include "BrimloCoreTests/Support/SampleRule.h"
#include "BrimloCoreTests/Support/Words.h"

#include <gmock/gmock.h>

#include <utility>

namespace Brimlo {
namespace {

using Testing::words;

const CleanupRule kBare = Testing::sampleRule("a.b");

Lossy<CleanupRule> decode(const std::string& element) {
    const auto pack = RuleJson::decodePack(R"({"pack":"p","rules":[)" + element + "]}");
    EXPECT_TRUE(pack && pack->rules && pack->rules->size() == 1) << element;
    return pack->rules->front();
}

/// The bare rule read with "key=value" in place of its own; without the key when there is no value.
Lossy<CleanupRule> decodeWith(const std::string& change) {
    const std::size_t equals = change.find('=');
    const std::string key = change.substr(0, equals);
    Json::Object rule = RuleJson::encode(kBare);
    rule.erase(key);
    const std::string text = Json::compact(rule);
    const std::string value = change.substr(equals + 1);
    return decode(value.empty() ? text : "{\"" + key + "\":" + value + "," + text.substr(1));
}

TEST(RuleJsonTest, ReadsTheRiskInEachOfItsForms) {
    const std::pair<Risk, const char*> cases[] = {
        {Risk::safe,    R"(0 "safe" "SaFe")"           },
        {Risk::rebuild, R"(1 1.0 "rebuild" "Rebuilds")"},
        {Risk::review,  R"(2 "REVIEW")"                },
    };
    for (const auto& [risk, values] : cases) {
        CleanupRule expected = kBare;
        expected.risk = risk;
        for (const std::string& value : words(values)) {
            EXPECT_EQ(decodeWith("risk=" + value).value, expected) << value;
        }
        EXPECT_EQ(RuleJson::encode(expected).at("risk").as_string(), rawValue(risk));
    }
}

TEST(RuleJsonTest, NamesTheFieldThatIsWrong) {
    const std::pair<const char*, const char*> cases[] = {
        {"is missing",                              "id= id=null name= group= personas= risk="      },
        {"is not a text",                           "id=1 name=[] risk=3 risk=-1 risk=0.5 risk=true"},
        {"is not a text",                           "risk=18446744073709551616 confidence=1"        },
        {"risk must be safe, rebuild or review",    R"(risk="" risk="safe\n" risk="1")"             },
        {"is not a list",                           R"(personas="general" paths={} quitApps="x")"   },
        {"item 1 is not a text",                    R"(personas=["general",1] excludes=["",null])"  },
        {R"("General" is not an audience)",         R"(personas=["General"])"                       },
        {"is neither true nor false",               R"(contentsOnly=1 catchAll="yes")"              },
        {"is not a whole number",                   R"(minAgeDays=1.5 minAgeDays="7")"              },
        {"is not a whole number",                   "minAgeDays=9223372036854775808"                },
        {"is not a list",                           R"(provenOn={} provenOn="linux")"               },
        {R"(field "date": is missing)",             R"(provenOn=[{"system":"s","program":"p"}])"    },
        {"is not an object",                        "provenOn=[1]"                                  },
        {"\"a\uFFFDb\" is not a level of evidence", R"(confidence="a\nb")"                          },
    };
    for (const auto& [reason, changes] : cases) {
        for (const std::string& change : words(changes)) {
            const std::string error =
                "field \"" + change.substr(0, change.find('=')) + "\": " + reason;
            EXPECT_EQ(decodeWith(change), (Lossy<CleanupRule>{.error = error})) << change;
        }
    }
}

TEST(RuleJsonTest, TakesDefaultsForAbsentAndNullFields) {
    for (const std::string& key : words("officialCommand quitApps contentsOnly excludes minAgeDays "
                                        "catchAll domain confidence sources provenOn")) {
        EXPECT_EQ(decodeWith(key + "=").value, kBare) << key;
        EXPECT_EQ(decodeWith(key + "=null").value, kBare) << key;
    }
    EXPECT_EQ(decodeWith("isCatchAll=true").value, kBare);
    EXPECT_TRUE(decodeWith("catchAll=true").value->isCatchAll);
}

TEST(RuleJsonTest, WritesAllKeysInOrderAndReadsThemBack) {
    const std::string full =
        R"({"id":"x.\"y\"","name":"é\n","group":"G","personas":["design3D","general"],)"
        R"("risk":"review","paths":["~/a","/Volumes/*/b"],"regenerates":"",)"
        R"("officialCommand":"run","quitApps":["Mail"],"contentsOnly":true,"excludes":["[a-z]*"],)"
        R"("minAgeDays":-7,"catchAll":true,"domain":"","confidence":"verified-local",)"
        R"("sources":["https://example.com"],"beside":["b"],"owners":["~/o"],"ownerFiles":["/f/*"],)"
        R"("provenOn":[{"system":"linux","program":"p 1","date":"2026-03-01"}]})";
    EXPECT_EQ(Json::compact(RuleJson::encode(*decode(full).value)), full);
    EXPECT_EQ(
        Json::compact(RuleJson::encode(kBare)),
        R"({"id":"a.b","name":"Mine","group":"A Tool Of Mine","personas":["general"],"risk":"safe",)"
        R"("paths":["~/.cache/mine"],"regenerates":"It is made again.","quitApps":[],)"
        R"("contentsOnly":false,"excludes":[],)"
        R"("catchAll":false,"confidence":"documented","sources":[]})");
    EXPECT_EQ(
        Json::compact(RuleJson::encode(ArtifactPattern{.id = "i", .markers = {"m"}})),
        R"({"id":"i","name":"","group":"","personas":[],"risk":"review","regenerates":"",)"
        R"("names":[],"suffixes":[],"markers":["m"],"excludes":[]})");
    EXPECT_THAT(
        Json::compact(RuleJson::encode(ArtifactPattern{.proofs = {"p"}, .disproofs = {"d"}})),
        testing::EndsWith(R"("excludes":[],"proofs":["p"],"disproofs":["d"]})"));
}

}  // namespace
}  // namespace Brimlo
