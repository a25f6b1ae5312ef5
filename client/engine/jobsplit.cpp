#include "client/engine/jobsplit.h"

#include <algorithm>

namespace Zant {

MTJobSplit::MTJobSplit(const MTFunctionsVtable* table) : mt(table) {
    if (mt) job = mt->createJob(this);
}

MTJobSplit::~MTJobSplit() {
    if (job) mt->destroyJob(job);
}

void MTJobSplit::start(const size_t* dims, int threads) {
    if (threads >= 2 && job) {
        mt->runJob(job, dims, threads, callback, this);
        return;
    }
    const size_t counts[3] = {std::max<size_t>(dims[0], 1), std::max<size_t>(dims[1], 1), std::max<size_t>(dims[2], 1)};
    for (size_t k = 0; k < counts[2]; ++k)
        for (size_t j = 0; j < counts[1]; ++j)
            for (size_t i = 0; i < counts[0]; ++i) {
                const size_t index[3] = {i, j, k};
                run(index, 0);
            }
}

void MTJobSplit::callback(const size_t* index, int thread, void* context) {
    static_cast<MTJobSplit*>(context)->run(index, thread);
}

void MTJobSplit::run(const size_t*, int) {}

}  // namespace Zant
