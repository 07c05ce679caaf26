#include "BrimloCore/Journal/Journal.h"

#include "BrimloCore/Support/Dates.h"
#include "BrimloCoreTests/Support/Words.h"
#include "Support/TempHome.h"

#include <filesystem>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo {
namespace {

using namespace std::string_literals;

using Testing::contentOf;
using Testing::exists;
using Kind = JournalLog::Kind;
using Texts = std::vector<std::string>;

/// An entry's text; "key=value" replaces the value of one key, "key=" leaves the key out.
std::string entryText(const std::string& change = "") {
    std::string text =
        R"({"id":"00112233-4455-6677-8899-AABBCCDDEEFF","date":"2026-03-01T09:30:00Z",)"
        R"("originalPath":"/a","trashPath":"/trash/a","size":4096,"ruleID":"general.x",)"
        R"("undone":false,"purgedFromTrash":true,"trashID":"1:2",)"
        R"("batchID":"FFFFFFFF-4455-6677-8899-AABBCCDDEEFF"})";
    if (!change.empty()) {
        const std::string key = change.substr(0, change.find('='));
        const std::string value = change.substr(key.size() + 1);
        const std::size_t start = text.find("\"" + key + "\":");
        const std::size_t end = text.find_first_of(",}", start);
        text.replace(start, end - start, value.empty() ? "" : "\"" + key + "\":" + value);
        for (const char* hole : {",,", "{,", ",}"}) {
            const std::size_t comma = text.find(hole);
            if (value.empty() && comma != std::string::npos) {
                text.erase(comma + (hole[0] == '{' ? 1 : 0), 1);
            }
        }
    }
    return text;
}

JournalEntry entryAt(const std::string& date, std::string path) {
    JournalEntry entry = JournalEntry::make({.originalPath = std::move(path), .size = 1});
    entry.date = *Dates::parse(date);
    return entry;
}

class JournalTest : public Testing::TempHome {
protected:
    std::vector<JournalEntry> entries() { return journal_.entries().value(); }

    Texts paths() {
        Texts result;
        for (const JournalEntry& entry : entries()) {
            result.push_back(entry.originalPath);
        }
        return result;
    }

    std::string path_ = at("journal.json");
    std::string corrupt_ = path_ + ".corrupt";
    std::string log_ = path_ + ".log";
    Journal journal_{path_};
    JournalEntry entry_ = entryAt("2026-03-01T09:30:00Z", "/new");
};

TEST_F(JournalTest, WritesTheFieldsInOrderAndLeavesAbsentOnesOut) {
    EXPECT_EQ(paths(), Texts{});
    EXPECT_FALSE(exists(corrupt_));
    const std::string id = R"("00112233-4455-6677-8899-AABBCCDDEEFF")";
    const std::pair<std::string, std::string> cases[] = {
        {"",                                             ""                           },
        {"trashPath=null",                               "trashPath="                 },
        {"ruleID=null",                                  "ruleID="                    },
        {"trashID=",                                     "trashID="                   },
        {"batchID=",                                     "batchID=" + id              },
        {"batchID=null",                                 "batchID=" + id              },
        {R"(id="00112233-4455-6677-8899-aabbccddeeff")", ""                           },
        {"size=3.0",                                     "size=3"                     },
        {R"(size=1,"size":2)",                           "size=2"                     },
        {R"(size=4096,"new":[1e400])",                   ""                           },
        {R"(date="2026-03-01T10:30:00+01:00")",          ""                           },
        {R"(originalPath="\u0000\ud83d\ude00\/")",       R"(originalPath="\u0000😀/")"},
    };
    for (const auto& [before, after] : cases) {
        write("journal.json", "[" + entryText(before) + "]");
        EXPECT_TRUE(journal_.update({Uuid{}}, [](JournalEntry&) { FAIL() << "another id"; }));
        EXPECT_EQ(contentOf(path_), "[" + entryText(after) + "]");
    }
    EXPECT_FALSE(exists(corrupt_));
}

TEST_F(JournalTest, KeepsADamagedElementAsideAndReadsTheRest) {
    Texts damaged = Testing::words(R"({"id":1} null [] {} "text" 3)");
    for (const std::string& change : Testing::words(R"(id= id=null id=1 id="x" date= date=null
             date=1772357400 date="2026-02-30T09:30:00Z" date="0000-01-01T00:00:00+01:00"
             originalPath= originalPath=null originalPath=["/a"] trashPath={} size= size=null
             size="1" size=1.5 size=true size=9223372036854775808 size=18446744073709551616
             size=1e400 undone= undone=null undone=0 purgedFromTrash= purgedFromTrash="false"
             ruleID=7 trashID=[] batchID="x")")) {
        damaged.push_back(entryText(change));
    }
    for (const std::string& element : damaged) {
        SCOPED_TRACE(element);
        const std::string text =
            "[" + entryText() + " ,\n" + element + "," + entryText(R"(originalPath="/b")") + "]\n";
        write("journal.json", text);
        EXPECT_EQ(paths(), (Texts{"/b", "/a"}));
        EXPECT_EQ(contentOf(path_), text);
        EXPECT_TRUE(journal_.append(entry_));
        EXPECT_EQ(contentOf(corrupt_), text);
        ASSERT_TRUE(std::filesystem::remove(corrupt_));
        EXPECT_EQ(paths(), (Texts{"/new", "/b", "/a"}));
        EXPECT_FALSE(exists(corrupt_));
    }
}

TEST_F(JournalTest, KeepsADamagedDocumentAside) {
    const std::string element = entryText();
    const std::string broken(100'000, '[');
    Texts documents = Testing::words("not-json null {} [1 []] [],");
    for (const char* field : {"\"\xFF\"", "\"\xED\xA0\x80\"", R"("\ud800")", "\"a\nb\"", "'a'"}) {
        documents.push_back("[" + entryText(std::string{"originalPath="} + field) + "]");
    }
    documents.insert(documents.end(), {"", element, "[" + element, "[" + element.substr(0, 70)});
    documents.insert(documents.end(), {"[" + element + ",]", "[" + element + "]\0"s, broken});
    documents.push_back(broken + std::string(broken.size(), ']'));
    for (const std::string& text : documents) {
        SCOPED_TRACE(text.substr(0, 100));
        write("journal.json", text);
        for (int time = 0; time < 2; ++time) {
            EXPECT_EQ(paths(), Texts{});
            EXPECT_EQ(contentOf(path_), text);
            EXPECT_EQ(contentOf(corrupt_), text);
            ASSERT_TRUE(std::filesystem::remove(corrupt_));
        }
        EXPECT_TRUE(journal_.append(entry_));
        EXPECT_EQ(contentOf(corrupt_), text);
        EXPECT_EQ(entries(), std::vector{entry_});
    }
}

TEST_F(JournalTest, AnyBytesInATextLeaveTheFileReadable) {
    const std::pair<std::string, std::string> cases[] = {
        {"\"\\/\b\f\n\r\t\x01\x7F", "\"\\/\b\f\n\r\t\x01\x7F"},
        {"a\0b é😀\u2028\uFFFF"s,   "a\0b é😀\u2028\uFFFF"s  },
        {"",                        ""                       },
        {"/a\xFF/b",                "/a\uFFFD/b"             },
        {"\xC3",                    "\uFFFD"                 },
        {"\xF0\x9F\x98",            "\uFFFD"                 },
    };
    Texts expected;
    for (const auto& [text, kept] : cases) {
        entry_.id = Uuid::random();
        entry_.originalPath = text;
        entry_.trashPath = entry_.ruleID = entry_.trashID = text;
        EXPECT_TRUE(journal_.append(entry_));
        expected.insert(expected.begin(), kept);
        EXPECT_EQ(paths(), expected);
    }
    EXPECT_FALSE(exists(corrupt_));
}

TEST_F(JournalTest, AGroupCountsAtOnceAndLeavesTheFileAlone) {
    EXPECT_TRUE(journal_.append(entryAt("2026-03-01T09:30:00Z", "/old")));
    const std::string before = contentOf(path_);
    const int other = open((path_ + ".lock").c_str(), O_RDWR | O_CLOEXEC);
    {
        auto group = journal_.begin();
        EXPECT_TRUE(group->announce(Kind::leaves, {entry_}));
        EXPECT_TRUE(group->record(Kind::added, {entry_}));
        EXPECT_NE(flock(other, LOCK_EX | LOCK_NB), 0);
    }
    EXPECT_EQ(flock(other, LOCK_EX | LOCK_NB), 0);
    close(other);
    EXPECT_EQ(paths(), (Texts{"/new", "/old"}));
    EXPECT_EQ(contentOf(path_), before);

    // A power cut tears the last line, and the next one is whole.
    write("journal.json.log", contentOf(log_) + R"({"added":{"id":)");
    entry_.undone = true;
    EXPECT_TRUE(journal_.begin()->record(Kind::changed, {entry_}));
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(entries().front(), entry_);
        EXPECT_EQ(paths(), (Texts{"/new", "/old"}));
        EXPECT_EQ(exists(log_), time == 0);
        EXPECT_TRUE(journal_.merge());
    }
    EXPECT_FALSE(exists(corrupt_));
}

TEST_F(JournalTest, ForgetsWhatWasAnnouncedAndDidNotMove) {
    entry_.trashPath = at("none");
    entry_.originalPath = write("item");
    for (const Kind kind : {Kind::leaves, Kind::returns}) {
        EXPECT_TRUE(journal_.begin()->announce(kind, {entry_}));
        // The item of an entry that is unknown has not come back either.
        EXPECT_EQ(paths(), Texts{});
        EXPECT_FALSE(exists(log_));
    }
}

TEST_F(JournalTest, ReadsTheLogTwiceWithoutHarm) {
    EXPECT_TRUE(journal_.begin()->record(Kind::added, {entry_}));
    const std::string log = contentOf(log_);
    EXPECT_TRUE(journal_.append(entryAt("2026-03-01T09:30:00Z", "/next")));
    write("journal.json.log", log);  // Its removal did not reach the disk.
    EXPECT_EQ(paths(), (Texts{"/next", "/new"}));
    EXPECT_TRUE(journal_.append(entryAt("2026-03-01T09:30:00Z", "/last")));
    EXPECT_EQ(paths(), (Texts{"/last", "/next", "/new"}));
}

TEST_F(JournalTest, RemovesWhatAKilledWriterLeft) {
    const std::pair<std::string, bool> cases[] = {
        {write("journal.json.0A1B2C3D.tmp"),  false},
        {write("journal.json.0A1B2C3.tmp"),   true },
        {write("journal.json.0A1B2C3D.tmp2"), true },
        {write("other.json.0A1B2C3D.tmp"),    true },
    };
    EXPECT_TRUE(journal_.append(JournalEntry::make({.originalPath = "/x"})));
    for (const auto& [file, stays] : cases) {
        EXPECT_EQ(exists(file), stays) << file;
    }
}

TEST_F(JournalTest, LeavesAloneWhatItCannotReadOrWrite) {
    const auto expectUntouched = [&](const std::string& path, bool isEmpty = false) {
        Journal journal{path};
        EXPECT_EQ(journal.entries().has_value(), isEmpty);
        const auto before = Testing::describeTree(home());
        EXPECT_FALSE(journal.append(entry_));
        EXPECT_FALSE(journal.update({entry_.id}, [](JournalEntry&) {}));
        EXPECT_FALSE(journal.checkWritable());
        auto group = journal.begin();
        EXPECT_FALSE(group && group->announce(Kind::leaves, {entry_}));
        EXPECT_EQ(Testing::describeTree(home()), before);
        EXPECT_FALSE(exists(path + ".corrupt"));
    };
    expectUntouched(at("missing/journal.json"), true);
    expectUntouched(write("file") + "/journal.json");
    expectUntouched(makeFolder("folder"));
    ASSERT_EQ(mkfifo(at("pipe").c_str(), 0600), 0);
    expectUntouched(at("pipe"));

    // What stands in the place of its other files.
    write("journal.json", "not json");
    write("journal.json.corrupt/file");
    const auto before = Testing::describeTree(corrupt_);
    EXPECT_EQ(paths(), Texts{});
    EXPECT_EQ(Testing::describeTree(corrupt_), before);
    std::filesystem::remove_all(corrupt_);
    link("journal.json.corrupt", "file");
    std::filesystem::remove(path_ + ".lock");
    link("journal.json.lock", "made");
    EXPECT_TRUE(journal_.append(entry_));
    EXPECT_EQ(paths(), Texts{"/new"});
    EXPECT_EQ(contentOf(at("file")), "content");
    EXPECT_EQ(contentOf(corrupt_), "not json");
    EXPECT_FALSE(exists(at("made")));
}

TEST_F(JournalTest, AHugeFileCostsNoMoreThanItsShare) {
    constexpr std::size_t kSize = 100'000'000;
    const std::string junk = "\"" + std::string(1000, 'x') + "\",[],{\"id\":1},";
    std::string text = "[";
    text.reserve(kSize + junk.size());
    while (text.size() < kSize) {
        text += junk;
    }
    write("journal.json", text += entryText() + "]");
    EXPECT_EQ(paths(), Texts{"/a"});
    EXPECT_EQ(std::filesystem::file_size(corrupt_), text.size());
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    EXPECT_LT(usage.ru_maxrss / 1024, 1000) << "megabytes";
}

}  // namespace
}  // namespace Brimlo
