#include "tools/completion.h"

#include "tools/events.h"

#include <fmt/format.h>

namespace norvane::tools {

std::string completion_script(const std::string& shell)
{
    std::string names;
    std::string arguments;
    for (const event& each : events()) {
        std::string fields;
        for (const auto& field : each.row->sent.fields) fields += fmt::format(" <{}>", field.name);
        for (const std::string& name : {each.name, each.alias}) {
            if (name.empty()) continue;
            names += name + " ";
            if (!fields.empty())
                arguments += fmt::format("        {}) COMPREPLY=(\"{}\" \" \") ;;\n", name, fields.substr(1));
        }
    }
    // zsh runs the same function through its bash compatibility.
    const std::string preamble = shell == "zsh" ? "autoload -U +X bashcompinit && bashcompinit\n" : "";
    return preamble + fmt::format(R"(_tarnctl() {{
    local word=${{COMP_WORDS[COMP_CWORD]}}
    COMPREPLY=()
    case $COMP_CWORD in
    1) COMPREPLY=($(compgen -W "notify observers watch panel completion --help" -- "$word")) ;;
    2)
        case ${{COMP_WORDS[1]}} in
        notify) COMPREPLY=($(compgen -W "{}" -- "$word")) ;;
        completion) COMPREPLY=($(compgen -W "bash zsh" -- "$word")) ;;
        esac
        ;;
    3)
        [ -n "$word" ] || case ${{COMP_WORDS[2]}} in
{}        esac
        ;;
    esac
}}
complete -F _tarnctl tarnctl
)",
                                  names, arguments);
}

}  // namespace norvane::tools
