// Walks the list of a job's send records.
//
//     tarnsim examples/device.json &
//     jobinfo_example
#include "tarn_jobinfo_facade.h"

#include <cstdio>

int main()
{
    norvane::tarn_jobinfo_facade* const jobinfo = norvane::tarn_jobinfo_facade::tarn_jobinfo_get_instance();

    const unsigned int job = 7001;
    const auto type = static_cast<TARN_JOBINFO_JOBLOG_TYPE_VAL>(1);
    if (const unsigned int failure = jobinfo->tarn_jobinfo_create_send_info_list(job, type)) {
        std::printf("job %u has no log: 0x%08x\n", job, failure);
        return 1;
    }
    // The walk ends with the service's first refusal, and is bounded: a service that is gone returns 0.
    const int most = 100;
    int count = 0;
    TARN_JOBINFO_SEND_INFO info;
    while (count < most && jobinfo->tarn_jobinfo_get_send_info(info) == 0) {
        // What a record holds is the service's; here the address begins at its ninth byte.
        std::printf("job %u was sent to %s\n", job, reinterpret_cast<const char*>(info.bytes + 8));
        ++count;
    }
    jobinfo->tarn_jobinfo_delete_send_info_list();
    std::printf("%d send records\n", count);
    return 0;
}
