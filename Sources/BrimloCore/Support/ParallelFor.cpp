#include "BrimloCore/Support/ParallelFor.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <tbb/partitioner.h>

namespace Brimlo {

void parallelFor(std::size_t count, const std::function<void(std::size_t)>& body) {
    // One index a task: the costs of two indices can differ a millionfold.
    tbb::parallel_for(
        tbb::blocked_range<std::size_t>(0, count, 1),
        [&](const tbb::blocked_range<std::size_t>& range) {
            for (std::size_t i = range.begin(); i != range.end(); ++i) {
                body(i);
            }
        },
        tbb::simple_partitioner{});
}

}  // namespace Brimlo
