#include "BrimloCore/Docker/DockerSnapshot.h"

#include <algorithm>
#include <functional>
#include <iterator>

namespace Brimlo {

std::vector<DockerObject> DockerSnapshot::objectsIn(DockerCategory category) const {
    std::vector<DockerObject> found;
    std::ranges::copy_if(objects, std::back_inserter(found), [&](const DockerObject& object) {
        return object.category == category;
    });
    std::ranges::stable_sort(found, std::ranges::greater{}, &DockerObject::size);
    return found;
}

std::int64_t DockerSnapshot::totalIn(DockerCategory category) const {
    std::int64_t total = 0;
    for (const DockerObject& object : objects) {
        total += object.category == category ? object.size : 0;
    }
    return total;
}

std::int64_t DockerSnapshot::reclaimableTotal() const {
    std::int64_t total = 0;
    for (const DockerObject& object : objects) {
        total += object.size;
    }
    return total;
}

}  // namespace Brimlo
