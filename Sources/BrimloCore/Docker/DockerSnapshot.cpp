#include "BrimloCore/Docker/DockerSnapshot.h"

#include "BrimloCore/Models/Bytes.h"

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
    return Bytes::total(objects, [&](const DockerObject& object) {
        return object.category == category ? object.size : 0;
    });
}

std::int64_t DockerSnapshot::reclaimableTotal() const {
    return Bytes::total(objects, &DockerObject::size);
}

}  // namespace Brimlo
