// A start of the program in virtual time.
#pragma once

#include "app/start_up.h"
#include "identify/fake_panel.h"
#include "support/test_program.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace harvelop::test
{

// A start whose windows only say that they were asked for.
struct TestStart : TestProgram {
    std::vector<std::unique_ptr<FakePanel>> made;
    std::vector<std::string> said;
    std::vector<std::string> asked;
    std::vector<std::string> spoken; // languages
    std::function<void()> whenShown;

    TestStart()
    {
        heart.panels.Make = [this](int number) {
            made.push_back(std::make_unique<FakePanel>(number, heart.panelServices()));
            return made.back().get();
        };
    }
    ~TestStart() { heart.panels.Make = nullptr; }

    void Start(const std::string& commandLine)
    {
        StartUpHooks hooks;
        hooks.showOptions = [this] {
            asked.emplace_back("show options");
            if (whenShown)
                whenShown();
        };
        hooks.loadOptions = [this] {
            asked.emplace_back("load options");
            heart.viewing.RefreshFoundLoggers();
            heart.state.cbxUnload_TallyCores.Select(0);
        };
        hooks.speak = [this](const std::string& language) { spoken.push_back(language); };
        hooks.say = [this](const std::string& line) { said.push_back(line); };
        StartUp(heart, hooks).Run(commandLine);
    }

    void Store(const std::string& foundIni) { files.files[FoundIni] = foundIni; }
};

} // namespace harvelop::test
