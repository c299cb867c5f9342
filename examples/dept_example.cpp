// Adds a hidden department, reads its record and deletes it again.
//
//     tarnsim examples/device.json &
//     dept_example
#include "tarn_dept_facade.h"

#include <cstdio>

int main()
{
    norvane::tarn_dept_facade* const dept = norvane::tarn_dept_facade::tarn_dept_get_instance();

    const char* const code = "4711";
    if (const unsigned int failure = dept->tarn_dept_create_hide_dept(code)) {
        std::printf("there is no department %s: 0x%08x\n", code, failure);
        return 1;
    }
    // What a department's record holds is the service's; here it begins with the code.
    TARN_DEPT_DEPTINFO department;
    if (const unsigned int failure = dept->tarn_dept_retrieve_hide_dept(code, department)) {
        std::printf("the department was not found: 0x%08x\n", failure);
        return 1;
    }
    std::printf("the department's code is %.12s\n", reinterpret_cast<const char*>(department.bytes));

    if (const unsigned int failure = dept->tarn_dept_delete_hide_dept(code)) {
        std::printf("the department was not deleted: 0x%08x\n", failure);
        return 1;
    }
    std::printf("it is gone again\n");
    return 0;
}
