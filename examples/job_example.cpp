// Scans into a file.
//
//     tarnsim examples/device.json &
//     job_example scanned.pgm
#include "tarn_job_facade.h"

#include <cstdio>
#include <cstring>

namespace {

/// Fetches the job's data piece by piece: its length, whether it is the last, and then the bytes.
unsigned int fetch(norvane::tarn_job_facade& jobs, unsigned int job, std::FILE* file)
{
    TARN_JOB_GET_SCAN_DATA piece{};
    for (unsigned int last = 0; last == 0;) {
        if (const unsigned int failure = jobs.tarn_job_get_scan_data(job, piece)) return failure;
        unsigned int length = 0;
        std::memcpy(&length, piece.bytes, sizeof length);
        std::memcpy(&last, piece.bytes + 4, sizeof last);
        if (length == 0) break;
        std::fwrite(piece.bytes + 8, 1, length, file);
        std::printf("%u bytes\n", length);
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: job_example FILE\n");
        return 2;
    }
    norvane::tarn_job_facade& jobs = *norvane::tarn_job_facade::tarn_job_get_instance();

    // Category 8 is a scan; making its record makes the shared memory ready through which the data comes.
    unsigned int job = 0;
    if (const unsigned int failure = jobs.tarn_job_generate_jobinfo(static_cast<TARN_JOB_PHB_CATEGORY>(8), job)) {
        std::printf("there is no scan job: 0x%08x\n", failure);
        return 1;
    }
    const auto resolution = static_cast<TARN_JOB_SETTING>(1);
    jobs.tarn_job_set_value(job, resolution, 300U);

    std::FILE* const file = std::fopen(argv[1], "wb");
    unsigned int failure = 1;
    unsigned int started = 0;
    if (file == nullptr) {
        std::perror(argv[1]);
    } else if ((failure = jobs.tarn_job_start(static_cast<TARN_JOB_CATEGORY>(3), job, started)) != 0 ||
               (failure = fetch(jobs, job, file)) != 0) {
        std::printf("the scan failed: 0x%08x\n", failure);
    }
    if (file != nullptr) std::fclose(file);

    // In any case: it releases the shared memory.
    jobs.tarn_job_delete_jobinfo(job);
    return failure == 0 ? 0 : 1;
}
