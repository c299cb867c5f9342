#include "story.h"
#include "tarn_dept_facade.h"

#include <cstring>

namespace tour {

namespace {

using norvane::tarn_dept_facade;

// Where the device file's layout has these fields.
constexpr std::size_t name_offset = 12;
constexpr std::size_t printed_offset = 80;

unsigned int printed_pages(const TARN_DEPT_DEPTINFO& department)
{
    unsigned int pages = 0;
    std::memcpy(&pages, department.bytes + printed_offset, sizeof pages);
    return pages;
}

std::string name_of(const TARN_DEPT_DEPTINFO& department)
{
    return reinterpret_cast<const char*>(department.bytes) + name_offset;
}

void existing_departments(story& story, tarn_dept_facade& facade)
{
    TARN_DEPT_DEPTINFO department;
    for (const json& entry : story.device().at("dept").at("departments")) {
        const auto code = entry.at("code").get<std::string>();
        facade.tarn_dept_retrieve_hide_dept(code, department);
        story.expect(fmt::format("name of department {}", code), name_of(department),
                     entry.at("name").get<std::string>());
        story.expect("  pages that it has printed", printed_pages(department), entry.at("printed").get<unsigned int>());
    }
}

void one_more_department(story& story, tarn_dept_facade& facade)
{
    TARN_DEPT_DEPTINFO department{};
    std::memcpy(department.bytes, "3003", 4);
    std::memcpy(department.bytes + name_offset, "Design", 6);
    const unsigned int pages = 77;
    std::memcpy(department.bytes + printed_offset, &pages, sizeof pages);
    story.succeeded("add department 3003, Design", facade.tarn_dept_add_hide_dept(department));
    story.refused("add it again", facade.tarn_dept_add_hide_dept(department), 0x02000006);
    std::memcpy(department.bytes + name_offset, "Studio", 6);
    story.succeeded("rename it to Studio", facade.tarn_dept_update_hide_dept(department));
    story.succeeded("reset its counter", facade.tarn_dept_reset_hide_dept_counter("3003"));
    facade.tarn_dept_retrieve_hide_dept("3003", department);
    story.expect("its name now", name_of(department), std::string("Studio"));
    story.expect("pages that it has printed now", printed_pages(department), 0U);
    story.succeeded("delete it", facade.tarn_dept_delete_hide_dept("3003"));
    story.refused("look for it", facade.tarn_dept_retrieve_hide_dept("3003", department), 0x02000005);
}

}  // namespace

void dept(story& story)
{
    story.chapter("Departments");
    auto& facade = *tarn_dept_facade::tarn_dept_get_instance();
    existing_departments(story, facade);
    one_more_department(story, facade);

    const json& device = story.device().at("dept");
    TARN_DEPT_DEPT_MODE mode{};
    facade.tarn_dept_get_dept_mode(mode);
    story.expect("department mode", static_cast<unsigned int>(mode), device.at("dept_mode").get<unsigned int>());
    TARN_DEPT_LIMIT_ACTION action{};
    facade.tarn_dept_get_limit_action_mode(action);
    story.expect("what happens at a department's limit", static_cast<unsigned int>(action),
                 device.at("limit_action").get<unsigned int>());
}

}  // namespace tour
