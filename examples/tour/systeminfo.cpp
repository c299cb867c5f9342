#include "story.h"
#include "tarn_systeminfo_facade.h"

#include <cstring>

namespace tour {

namespace {

TARN_ENTKEY key_of(const json& entry) { return static_cast<TARN_ENTKEY>(entry.at("key").get<unsigned int>()); }

}  // namespace

void systeminfo(story& story)
{
    story.chapter("System information");
    auto& facade = *norvane::tarn_systeminfo_facade::tarn_systeminfo_get_instance();
    const json& device = story.device().at("systeminfo");

    unsigned int number = 0;
    std::string text;
    facade.tarn_systeminfo_get_model_type(number);
    story.expect("model type", number, device.at("model_type").get<unsigned int>());
    facade.tarn_systeminfo_get_screen_size(number);
    story.expect("screen size", number, device.at("screen_size").get<unsigned int>());

    for (const json& entry : device.at("values")) {
        const std::string asked = fmt::format("value of key {}", entry.at("key").get<unsigned int>());
        if (entry.at("value").is_string()) {
            facade.tarn_systeminfo_get_value(key_of(entry), text);
            story.expect(asked, text, entry.at("value").get<std::string>());
        } else {
            facade.tarn_systeminfo_get_value(key_of(entry), number);
            story.expect(asked, number, entry.at("value").get<unsigned int>());
        }
    }
    for (const json& entry : device.at("machine_info")) {
        const auto selector = entry.at("selector").get<unsigned long>();
        const std::string asked =
            fmt::format("machine information {}/{}", entry.at("key").get<unsigned int>(), selector);
        if (entry.at("value").is_string()) {
            facade.tarn_systeminfo_get_machine_info(key_of(entry), selector, text);
            story.expect(asked, text, entry.at("value").get<std::string>());
        } else {
            facade.tarn_systeminfo_get_machine_info_bkg(key_of(entry), selector, number);
            story.expect(asked, number, entry.at("value").get<unsigned int>());
        }
    }
    for (const json& entry : device.at("paper")) {
        TARN_PAPER_INFO paper{};
        facade.tarn_systeminfo_get_paper_info(key_of(entry), paper);
        unsigned short sheets = 0;
        std::memcpy(&sheets, paper.bytes + 2, sizeof sheets);
        story.expect(fmt::format("sheets in the source of key {}", entry.at("key").get<unsigned int>()), sheets,
                     entry.at("info").at("sheets").get<unsigned short>());
    }
    for (const json& entry : device.at("counters")) {
        TARN_COUNT_INFO which{entry.at("kind").get<unsigned short>(), entry.at("detail").get<unsigned char>()};
        unsigned long count = 0;
        facade.tarn_systeminfo_get_count(which, count);
        story.expect(fmt::format("counter {}/{}", which.kind, which.detail), count,
                     entry.at("count").get<unsigned long>());
    }
    for (const json& entry : device.at("fax_encryption")) {
        unsigned char validity = 0;
        facade.tarn_systeminfo_get_fax_encryption_validity(key_of(entry), validity);
        story.expect(fmt::format("fax encryption for key {}", entry.at("key").get<unsigned int>()), validity,
                     entry.at("validity").get<unsigned char>());
    }

    const TARN_ENTKEY first = key_of(device.at("values").at(0));
    story.succeeded("change the first value to 45", facade.tarn_systeminfo_set_value(first, 45U));
    facade.tarn_systeminfo_get_value(first, number);
    story.expect("the first value now", number, 45U);
    story.succeeded("change it back",
                    facade.tarn_systeminfo_set_value(first, device.at("values").at(0).at("value").get<unsigned int>()));

    const auto unknown = static_cast<TARN_ENTKEY>(0xFFFF);
    story.refused("a key that the device does not have", facade.tarn_systeminfo_get_value(unknown, number), 0x02000003);
}

}  // namespace tour
