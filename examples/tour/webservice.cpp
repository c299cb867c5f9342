#include "story.h"
#include "tarn_webservice_facade.h"

namespace tour {

void webservice(story& story)
{
    story.chapter("Web services");
    auto& facade = *norvane::tarn_webservice_facade::tarn_webservice_get_instance();
    const json& device = story.device().at("webservice");

    const auto kind = static_cast<TARN_WEBSERVICE_KIND>(device.at("kinds").at(0).get<unsigned int>());
    story.succeeded("reserve the first kind as tour", facade.tarn_webservice_reserve(kind, "tour"));
    story.refused("reserve it as tour again", facade.tarn_webservice_reserve(kind, "tour"), 0x02000006);
    story.succeeded("release it", facade.tarn_webservice_release(kind, "tour"));
    story.refused("release it again", facade.tarn_webservice_release(kind, "tour"), 0x02000005);
    const auto unknown = static_cast<TARN_WEBSERVICE_KIND>(0xFFFF);
    story.refused("reserve a kind that the device does not have", facade.tarn_webservice_reserve(unknown, "tour"),
                  0x02000005);

    std::string path;
    std::string hdo[2];
    facade.tarn_webservice_get_hdo_certificate_filepath(hdo[0], hdo[1]);
    for (const json& entry : device.at("certificates")) {
        const auto type = entry.at("type").get<unsigned int>();
        const auto expected = entry.at("path").get<std::string>();
        facade.tarn_webservice_get_certificate(static_cast<TARN_SSL_FILE_TYPE>(type), path);
        story.expect(fmt::format("certificate of type {}", type), path, expected);
        if (type == 10) story.expect("  as the first of the hdo pair", hdo[0], expected);
        if (type == 11) story.expect("  as the second of the hdo pair", hdo[1], expected);
    }
}

}  // namespace tour
