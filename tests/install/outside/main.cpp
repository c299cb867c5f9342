#include <tarn_systeminfo_facade.h>

int main()
{
    unsigned int model = 0;
    const unsigned int result =
        norvane::tarn_systeminfo_facade::tarn_systeminfo_get_instance()->tarn_systeminfo_get_model_type(model);
    return result == 0 && model == 41 ? 0 : 1;
}
