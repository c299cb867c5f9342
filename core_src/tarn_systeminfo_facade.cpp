#include "tarn_systeminfo_facade.h"

#include "frame/call.h"
#include "frame/facade.h"
#include "protocol/systeminfo.h"

namespace norvane {

using frame::call;
using frame::into;
using frame::with;

namespace wire = protocol::systeminfo;

namespace {

constexpr frame::service service{
    .interface_id = wire::interface_id,
    .source = "core_src/tarn_systeminfo_facade",
    .failure = 0x04010502,
    .failure_line = 650,
    .client = frame::unreached_client::destroyed,
};

}  // namespace

tarn_systeminfo_facade* tarn_systeminfo_facade::s_the_instance_ = nullptr;
OSW_Mutex_Semaphore* tarn_systeminfo_facade::mtx_ = nullptr;
bmc_mc_client* tarn_systeminfo_facade::s_the_client_ = nullptr;

tarn_systeminfo_facade::tarn_systeminfo_facade() = default;
tarn_systeminfo_facade::~tarn_systeminfo_facade() = default;

long tarn_systeminfo_facade::dispatch(long, char*, unsigned int, gen_ipc_msghdr) { return 0; }

tarn_systeminfo_facade* tarn_systeminfo_facade::tarn_systeminfo_get_instance()
{
    return frame::instance(s_the_instance_, mtx_, [] {
        auto* const facade = new tarn_systeminfo_facade;
        facade->initialize_facade(facade);
        return facade;
    });
}

unsigned int tarn_systeminfo_facade::initialize_facade(tarn_systeminfo_facade*)
{
    return frame::initialize(service, s_the_client_);
}

unsigned int tarn_systeminfo_facade::tarn_systeminfo_get_value(TARN_ENTKEY key, unsigned int& value)
{
    return call<wire::get_number>(s_the_client_, with(key), into(value));
}

unsigned int tarn_systeminfo_facade::tarn_systeminfo_get_value(TARN_ENTKEY key, std::string& text)
{
    return call<wire::get_text>(s_the_client_, with(key), into(text));
}

unsigned int tarn_systeminfo_facade::tarn_systeminfo_set_value(TARN_ENTKEY key, unsigned int value)
{
    return call<wire::set_number>(s_the_client_, with(key, value));
}

unsigned int tarn_systeminfo_facade::tarn_systeminfo_set_value(TARN_ENTKEY key, std::string text)
{
    return call<wire::set_text>(s_the_client_, with(key, text));
}

unsigned int tarn_systeminfo_facade::tarn_systeminfo_get_paper_info(TARN_ENTKEY key, TARN_PAPER_INFO& paper)
{
    return call<wire::get_paper_info>(s_the_client_, with(key), into(paper));
}

unsigned int tarn_systeminfo_facade::tarn_systeminfo_get_count(TARN_COUNT_INFO& which, unsigned long& count)
{
    return call<wire::get_count>(s_the_client_, with(which.kind, which.detail), into(count));
}

unsigned int tarn_systeminfo_facade::tarn_systeminfo_get_machine_info(TARN_ENTKEY key, unsigned long selector,
                                                                      unsigned int& value)
{
    return call<wire::get_machine_number>(s_the_client_, with(key, selector), into(value));
}

unsigned int tarn_systeminfo_facade::tarn_systeminfo_set_machine_info(TARN_ENTKEY key, unsigned long selector,
                                                                      unsigned int value)
{
    return call<wire::set_machine_number>(s_the_client_, with(key, selector, value));
}

unsigned int tarn_systeminfo_facade::tarn_systeminfo_get_machine_info(TARN_ENTKEY key, unsigned long selector,
                                                                      std::string& text)
{
    return call<wire::get_machine_text>(s_the_client_, with(key, selector), into(text));
}

unsigned int tarn_systeminfo_facade::tarn_systeminfo_get_screen_size(unsigned int& size)
{
    return call<wire::get_screen_size>(s_the_client_, into(size));
}

unsigned int tarn_systeminfo_facade::tarn_systeminfo_get_model_type(unsigned int& model)
{
    return call<wire::get_model_type>(s_the_client_, into(model));
}

unsigned int tarn_systeminfo_facade::tarn_systeminfo_get_fax_encryption_validity(TARN_ENTKEY key,
                                                                                 unsigned char& validity)
{
    return call<wire::get_fax_encryption_validity>(s_the_client_, with(key), into(validity));
}

unsigned int tarn_systeminfo_facade::tarn_systeminfo_get_machine_info_bkg(TARN_ENTKEY key, unsigned long selector,
                                                                          unsigned int& value)
{
    return call<wire::get_machine_number_bkg>(s_the_client_, with(key, selector), into(value));
}

unsigned int tarn_systeminfo_facade::tarn_systeminfo_get_machine_info_bkg(TARN_ENTKEY key, unsigned long selector,
                                                                          std::string& text)
{
    return call<wire::get_machine_text_bkg>(s_the_client_, with(key, selector), into(text));
}

unsigned int tarn_systeminfo_facade::tarn_systeminfo_set_machine_info_bkg(TARN_ENTKEY key, unsigned long selector,
                                                                          unsigned int value)
{
    return call<wire::set_machine_number_bkg>(s_the_client_, with(key, selector, value));
}

}  // namespace norvane
