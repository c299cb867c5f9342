#include "tarn_webservice_facade.h"

#include "frame/call.h"
#include "frame/facade.h"
#include "protocol/webservice.h"

namespace norvane {

using frame::call;
using frame::into;
using frame::with;

namespace wire = protocol::webservice;

namespace {

constexpr frame::service service{
    .interface_id = wire::interface_id,
    .source = "core_src/tarn_webservice_facade",
    .failure = 0x04010606,
    .failure_line = 436,
    .client = frame::unreached_client::destroyed,
};

}  // namespace

tarn_webservice_facade* tarn_webservice_facade::s_the_instance_ = nullptr;
OSW_Mutex_Semaphore* tarn_webservice_facade::mtx_ = nullptr;
bmc_mc_client* tarn_webservice_facade::s_the_client_ = nullptr;

tarn_webservice_facade::tarn_webservice_facade() = default;
tarn_webservice_facade::~tarn_webservice_facade() = default;

long tarn_webservice_facade::dispatch(long, char*, unsigned int, gen_ipc_msghdr) { return 0; }

tarn_webservice_facade* tarn_webservice_facade::tarn_webservice_get_instance()
{
    return frame::instance(s_the_instance_, mtx_, [] {
        auto* const facade = new tarn_webservice_facade;
        facade->initialize_facade(facade);
        return facade;
    });
}

unsigned int tarn_webservice_facade::initialize_facade(tarn_webservice_facade*)
{
    return frame::initialize(service, s_the_client_);
}

unsigned int tarn_webservice_facade::tarn_webservice_reserve(TARN_WEBSERVICE_KIND kind, const std::string& name)
{
    return call<wire::reserve>(s_the_client_, with(kind, name));
}

unsigned int tarn_webservice_facade::tarn_webservice_release(TARN_WEBSERVICE_KIND kind, const std::string& name)
{
    return call<wire::release>(s_the_client_, with(kind, name));
}

unsigned int tarn_webservice_facade::tarn_webservice_get_certificate(TARN_SSL_FILE_TYPE type, std::string& path)
{
    return call<wire::get_certificate>(s_the_client_, with(type), into(path));
}

unsigned int tarn_webservice_facade::tarn_webservice_get_hdo_certificate_filepath(std::string& first,
                                                                                  std::string& second)
{
    constexpr int trace_line = 526;
    frame::trace_error({service.source, "tarn_webservice_get_hdo_certificate_filepath", trace_line},
                       "[Exit] Not Java Process");

    // Both requests travel in one record, and their replies into one: the second reply is read over what
    // the first has left.
    frame::exchange<wire::get_certificate> message;
    message.put(with(wire::first_hdo_certificate));
    message.send(s_the_client_);
    message.take(into(first));
    message.put(with(wire::second_hdo_certificate));
    message.send(s_the_client_);
    message.take(into(second));
    return message.result();
}

}  // namespace norvane
