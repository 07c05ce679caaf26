#include "BrimloCore/Docker/DockerParsing.h"

#include "BrimloCore/Support/Json.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <locale>
#include <ranges>
#include <sstream>
#include <system_error>
#include <utility>

// Docker's tool prints every value as a string, numbers and booleans included, so a value of
// another type counts as absent. An object is in use unless Docker says otherwise with the exact
// word.

namespace Brimlo::DockerParsing {

namespace {

/// `text` split at `separator`, without empty pieces.
std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(separator), text.size());
        if (end > 0) {
            pieces.push_back(text.substr(0, end));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return pieces;
}

/// `text` as an integer; nullopt unless all of it is one.
template <typename Number>
std::optional<Number> wholeNumber(std::string_view text) {
    if (text.starts_with('+') && !text.starts_with("+-")) {
        text.remove_prefix(1);
    }
    Number number = 0;
    const char* end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, number);
    return parsed.ec == std::errc{} && parsed.ptr == end ? std::optional{number} : std::nullopt;
}

/// `text` as a decimal number; nullopt unless all of it is one.
std::optional<double> decimal(const std::string& text) {
    std::istringstream stream{text};
    stream.imbue(std::locale::classic());  // The user's may have a decimal comma.
    double number = 0;
    stream >> std::noskipws >> number;
    return stream && stream.peek() == std::istringstream::traits_type::eof() ? std::optional{number}
                                                                             : std::nullopt;
}

/// `text` times ten to the `power`, truncated; nullopt when it is not a number or too large.
///
/// The power is added to the number's own exponent. A product would be off by a rounding error:
/// 4.1 megabytes would be 4,099,999 bytes.
std::optional<std::int64_t> scaled(std::string_view text, int power) {
    constexpr double kLimit = 9223372036854775808.0;  // 2^63
    const std::size_t mark = text.find_first_of("eE");
    int exponent = power;
    if (mark != std::string_view::npos) {
        const auto own = wholeNumber<std::int16_t>(text.substr(mark + 1));
        if (!own) {
            return std::nullopt;
        }
        exponent += *own;
    }
    const std::string digits{text.substr(0, mark)};
    const auto number = decimal(digits + "e" + std::to_string(exponent));
    if (!number || !(std::abs(*number) < kLimit)) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(*number);
}

/// Adds up sizes. A size that would overflow the sum counts as 0.
class Tally {
public:
    /// `size`, or 0 when the sum would overflow.
    std::int64_t admit(std::int64_t size) {
        // A negative size counts by its absolute value: nothing may make room again.
        if (std::abs(size) > std::numeric_limits<std::int64_t>::max() - total_) {
            return 0;
        }
        total_ += std::abs(size);
        return size;
    }

private:
    std::int64_t total_ = 0;
};

/// A JSON object of the document, its fields read as strings.
class Element {
public:
    explicit Element(const Json::Object& object)
        : object_{object} {}

    [[nodiscard]] std::optional<std::string> text(std::string_view key) const {
        const Json::Value* value = object_.if_contains(key);
        if (value == nullptr || !value->is_string()) {
            return std::nullopt;
        }
        const Json::String& string = value->get_string();
        return std::string{string.data(), string.size()};
    }

    [[nodiscard]] std::string textOr(std::string_view key, std::string_view fallback = "") const {
        return text(key).value_or(std::string{fallback});
    }

    [[nodiscard]] std::int64_t size(std::string_view key) const { return parseSize(textOr(key)); }

private:
    const Json::Object& object_;
};

/// The first twelve characters, by which Docker itself shortens an id.
std::string shortened(std::string_view id) {
    constexpr std::size_t kLength = 12;
    std::string result;
    for (const std::string_view character : Text::characters(id) | std::views::take(kLength)) {
        result += character;
    }
    return result;
}

std::string without(std::string text, std::string_view part) {
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at)) {
        text.erase(at, part.size());
    }
    return text;
}

std::optional<DockerObject> image(const Element& element) {
    const auto id = element.text("ID");
    if (element.text("Containers") != "0" || !id) {
        return std::nullopt;
    }
    const std::string repository = element.textOr("Repository", "<none>");
    const std::string tag = element.textOr("Tag", "<none>");
    const bool isDangling = repository == "<none>" && tag == "<none>";
    const std::int64_t ownSize = element.size("UniqueSize");
    return DockerObject{
        .kind = DockerObject::Kind::image,
        .dockerID = *id,
        .title = isDangling ? "<untagged> " + shortened(without(*id, "sha256:"))
                            : repository + ":" + tag,
        .detail = element.textOr("CreatedSince"),
        .size = ownSize < 1 ? element.size("Size") : ownSize,
        .category = isDangling ? DockerCategory::danglingImages : DockerCategory::unusedImages,
    };
}

/// The folder of the Compose project that a container belongs to, by its label.
std::optional<std::string> projectFolder(const Element& element) {
    constexpr std::string_view kLabel = "com.docker.compose.project.working_dir=";
    const std::string labels = element.textOr("Labels");
    for (const std::string_view label : split(labels, ',')) {
        if (label.starts_with(kLabel)) {
            return std::string{label.substr(kLabel.size())};
        }
    }
    return std::nullopt;
}

std::optional<DockerObject> container(
    const Element& element, const std::function<bool(const std::string&)>& folderExists) {
    const std::string state = element.textOr("State");
    const bool isStopped = state == "exited" || state == "created" || state == "dead";
    const auto id = element.text("ID");
    if (!isStopped || !id) {
        return std::nullopt;
    }
    std::string detail = element.textOr("Image") + " · " + element.textOr("Status", state);
    const auto folder = projectFolder(element);
    if (folder && !folderExists(*folder)) {
        detail += " · orphaned: project folder is gone";
    }
    return DockerObject{
        .kind = DockerObject::Kind::container,
        .dockerID = *id,
        .title = element.textOr("Names", *id),
        .detail = std::move(detail),
        .size = element.size("Size"),
        .category = DockerCategory::stoppedContainers,
    };
}

std::optional<DockerObject> volume(const Element& element) {
    const auto name = element.text("Name");
    if (element.text("Links") != "0" || !name) {
        return std::nullopt;
    }
    const bool isAnonymous = element.textOr("Labels").contains("com.docker.volume.anonymous");
    return DockerObject{
        .kind = DockerObject::Kind::volume,
        .dockerID = *name,
        .title = isAnonymous ? "anonymous " + shortened(*name) : *name,
        .detail = isAnonymous ? "anonymous volume, no container uses it"
                              : "named volume, no container uses it",
        .size = element.size("Size"),
        .category = DockerCategory::orphanVolumes,
    };
}

/// All unused records as one object: Docker can only remove them together.
std::optional<DockerObject> buildCache(const std::vector<Element>& records) {
    std::size_t count = 0;
    std::int64_t sum = 0;
    Tally tally;
    for (const Element& record : records) {
        if (record.text("InUse") != "true") {
            ++count;
            sum += tally.admit(record.size("Size"));
        }
    }
    if (sum < 1) {
        return std::nullopt;
    }
    return DockerObject{
        .kind = DockerObject::Kind::buildCache,
        .dockerID = "all",
        .title = "Unused build cache",
        .detail = std::to_string(count) + " cache records",
        .size = sum,
        .category = DockerCategory::buildCache,
    };
}

/// The elements of a list of JSON objects; none when the field is anything else.
std::vector<Element> elements(const Json::Object& document, std::string_view key) {
    const Json::Value* value = document.if_contains(key);
    if (value == nullptr || !value->is_array()) {
        return {};
    }
    std::vector<Element> elements;
    for (const Json::Value& element : value->get_array()) {
        const Json::Object* object = element.if_object();
        if (object == nullptr) {
            return {};
        }
        elements.emplace_back(*object);
    }
    return elements;
}

}  // namespace

std::int64_t parseSize(std::string_view text) {
    constexpr std::pair<std::string_view, int> kUnits[] = {
        {"TB", 12},
        {"GB", 9 },
        {"MB", 6 },
        {"kB", 3 },
        {"KB", 3 },
        {"B",  0 },
    };
    const std::vector<std::string_view> words = split(Text::trimmed(text), ' ');
    const std::string_view size = words.empty() ? std::string_view{} : words.front();
    for (const auto& [unit, power] : kUnits) {
        if (!size.ends_with(unit)) {
            continue;
        }
        if (const auto bytes = scaled(size.substr(0, size.size() - unit.size()), power)) {
            return *bytes;
        }
    }
    return 0;
}

std::vector<DockerSummaryRow> parseSummary(std::string_view text) {
    std::vector<DockerSummaryRow> rows;
    for (const std::string_view line : split(text, '\n')) {
        const auto document = Json::parse(line);
        const Json::Object* object = document ? document->if_object() : nullptr;
        const auto isText = [](const auto& field) { return field.value().is_string(); };
        if (object == nullptr || !std::ranges::all_of(*object, isText)) {
            continue;
        }
        const Element row{*object};
        rows.push_back({
            .type = row.textOr("Type"),
            .total = wholeNumber<std::int64_t>(row.textOr("TotalCount")).value_or(0),
            .active = wholeNumber<std::int64_t>(row.textOr("Active")).value_or(0),
            .sizeBytes = row.size("Size"),
            .reclaimableBytes = row.size("Reclaimable"),
        });
    }
    return rows;
}

std::expected<std::vector<DockerObject>, Error> parseObjects(
    std::string_view json, const std::function<bool(const std::string&)>& folderExists) {
    const auto parsed = Json::parse(json);
    if (!parsed) {
        return std::unexpected(Error{"Docker", 0, parsed.error()});
    }
    const Json::Object* document = parsed->if_object();
    if (document == nullptr) {
        return std::unexpected(Error{"Docker", 1, "not an object"});
    }
    std::vector<DockerObject> objects;
    Tally tally;
    const auto add = [&](std::optional<DockerObject> object) {
        if (object) {
            object->size = tally.admit(object->size);
            objects.push_back(std::move(*object));
        }
    };
    for (const Element& element : elements(*document, "Images")) {
        add(image(element));
    }
    for (const Element& element : elements(*document, "Containers")) {
        add(container(element, folderExists));
    }
    for (const Element& element : elements(*document, "Volumes")) {
        add(volume(element));
    }
    add(buildCache(elements(*document, "BuildCache")));
    return objects;
}

}  // namespace Brimlo::DockerParsing
