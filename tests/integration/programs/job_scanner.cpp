// An application that scans one job of a category to its end into a file: job_scanner CATEGORY FILE.
#include "tarn_job_facade.h"

#include <cstdlib>
#include <cstring>
#include <fstream>

int main(int argc, char** argv)
{
    if (argc != 3) return 2;
    auto& jobs = *norvane::tarn_job_facade::tarn_job_get_instance();
    unsigned int job = 0;
    unsigned int started = 0;
    const auto category = static_cast<TARN_JOB_PHB_CATEGORY>(std::atoi(argv[1]));
    if (jobs.tarn_job_generate_jobinfo(category, job) != 0) return 3;
    if (jobs.tarn_job_start(static_cast<TARN_JOB_CATEGORY>(3), job, started) != 0) return 4;

    std::ofstream file(argv[2], std::ios::binary);
    for (unsigned int last = 0; last == 0;) {
        TARN_JOB_GET_SCAN_DATA piece;
        if (jobs.tarn_job_get_scan_data(job, piece) != 0) return 5;
        unsigned int length = 0;
        std::memcpy(&length, piece.bytes, sizeof length);
        std::memcpy(&last, piece.bytes + 4, sizeof last);
        file.write(reinterpret_cast<const char*>(piece.bytes) + 8, static_cast<std::streamsize>(length));
    }
    file.close();
    return file && jobs.tarn_job_delete_jobinfo(job) == 0 ? 0 : 6;
}
