#include "tools/morvane/command.h"
#include "tools/morvane/completion/scripts.h"

#include <map>
#include <memory>
#include <string>

namespace Tool {

void AddCompletionCommand(CommandSet& commands) {
    Command command = commands.Add(
        {"completion", "Print the completion script of a shell", "0 done",
         "source <(morvane completion bash)\n"
         "morvane completion zsh > ~/.zfunc/_morvane\n"
         "morvane completion fish > ~/.config/fish/completions/morvane.fish"});
    auto shell = std::make_shared<std::string>();
    command.Add("shell", *shell, "SHELL", "The shell").Require().TakeOnly({"bash", "zsh", "fish"});
    commands.SetAction(command, [shell, &parser = commands.GetParser()](Console& console) {
        using WriteScript = std::string (*)(const std::vector<CommandArguments>& commands);
        static const std::map<std::string, WriteScript> writers = {
            {"bash", &WriteBashScript}, {"zsh", &WriteZshScript}, {"fish", &WriteFishScript}};
        console.out.Write(writers.at(*shell)(ReadArguments(parser)));
        return kDone;
    });
}

} // namespace Tool
