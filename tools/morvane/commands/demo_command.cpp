#include "tools/morvane/command.h"
#include "tools/morvane/demo/demo.h"
#include "tools/morvane/demo/examples_folder.h"

#include <memory>
#include <string>

namespace Tool {

void AddDemoCommand(CommandSet& commands) {
    Command command = commands.Add(
        {"demo", "Take a tour on a connection request", "0 every step did what it should",
         "morvane demo\n"
         "morvane demo --examples ./examples"});
    auto folder = std::make_shared<std::string>();
    command.Add("--examples", *folder, "DIR", "Folder with the examples to work on");
    commands.SetAction(command, [folder](Console& console) {
        RunDemo(folder->empty() ? FindExamplesFolder() : *folder, console);
        return kDone;
    });
}

} // namespace Tool
