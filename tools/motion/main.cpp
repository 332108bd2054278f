// touch-motion: writes the bundled touch recordings.
#include "tools/motion/GestureCatalogue.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using replay::motion::Gesture;

constexpr int ExitFault = 2;

void List() {
    for (const Gesture& gesture : replay::motion::Catalogue()) {
        std::cout << gesture.name << ": " << gesture.title << '\n';
    }
}

std::vector<const Gesture*> Chosen(const std::vector<std::string>& names, bool all) {
    if (all && !names.empty()) {
        throw std::invalid_argument("--all takes no names");
    }
    std::vector<const Gesture*> chosen;
    if (all) {
        for (const Gesture& gesture : replay::motion::Catalogue()) {
            chosen.push_back(&gesture);
        }
    }
    for (const std::string& name : names) {
        const Gesture* gesture = replay::motion::FindGesture(name);
        if (gesture == nullptr) {
            throw std::invalid_argument("no recording is named '" + name + "'; --list names them all");
        }
        chosen.push_back(gesture);
    }
    if (chosen.empty()) {
        throw std::invalid_argument("name a recording, or give --all or --list");
    }
    return chosen;
}

void Write(const Gesture& gesture, const std::filesystem::path& folder) {
    const std::filesystem::path path = folder / replay::motion::FileName(gesture);
    std::ofstream file(path, std::ios::binary);
    file << replay::motion::MakeRecording(gesture);
    file.close();
    if (!file) {
        throw std::runtime_error(path.string() + ": cannot be written");
    }
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("Writes human-like touch recordings in the EVEMU text format.", "touch-motion");
    bool list = false;
    bool all = false;
    std::string folder;
    std::vector<std::string> names;
    app.add_flag("--list", list, "List the recordings and what is done in each");
    app.add_flag("--all", all, "Write every recording");
    app.add_option("--out", folder, "Existing folder that takes the files; files of the same name are replaced");
    app.add_option("name", names, "Recordings to write");
    try {
        app.parse(argc, argv);
        if (list) {
            List();
            return 0;
        }
        const std::vector<const Gesture*> chosen = Chosen(names, all);
        if (folder.empty()) {
            throw std::invalid_argument("--out is missing");
        }
        for (const Gesture* gesture : chosen) {
            Write(*gesture, folder);
        }
        return 0;
    } catch (const CLI::Success& help) {
        return app.exit(help);
    } catch (const std::exception& fault) {
        std::cerr << "touch-motion: " << fault.what() << '\n';
        return ExitFault;
    }
}
