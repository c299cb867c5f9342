#include "story.h"

namespace tour {

void story::chapter(std::string_view title) { fmt::print("\n{}\n{:-<{}}\n", title, "", title.size()); }

void story::tell(std::string_view what) { fmt::print("  {}\n", what); }

void story::succeeded(std::string_view asked, unsigned int result)
{
    line(fmt::format("{}: {}", asked, result == 0 ? "done" : fmt::format("refused with {:#010x}", result)), result == 0,
         "done");
}

void story::refused(std::string_view asked, unsigned int result, unsigned int expected)
{
    line(fmt::format("{}: refused with {:#010x}", asked, result), result == expected,
         fmt::format("{:#010x}", expected));
}

int story::end() const
{
    fmt::print("\n{} answers, {} not as the device file says\n", checks_, wrong_);
    return wrong_ == 0 ? 0 : 1;
}

void story::line(const std::string& text, bool right, const std::string& expected)
{
    ++checks_;
    if (right) {
        fmt::print("  {}\n", text);
    } else {
        ++wrong_;
        fmt::print("  WRONG {}, expected {}\n", text, expected);
    }
    std::fflush(stdout);
}

}  // namespace tour
