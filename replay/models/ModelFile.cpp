// Both sides of reading a model: the child imports it and answers with bytes, the parent believes none of them. Every
// fault of either becomes one line that names the file.
#include "replay/models/ModelFile.h"

#include "replay/files/InputFile.h"
#include "replay/files/ReadError.h"
#include "replay/models/ModelImporter.h"
#include "replay/models/ModelWire.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace replay {

namespace {

// What an answer of the child begins with. A model's is followed by a refused file on a line of its own.
constexpr char ModelAnswer = 'M';
constexpr char FaultAnswer = 'F';
constexpr std::size_t LongestMessage = 300;  // bytes

// A message of the library, or a name from a file, as one short line.
std::string OneLine(std::string text) {
    text.resize(std::min(text.size(), LongestMessage));
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < 0x20 || c == 0x7F; }, ' ');
    return text;
}

// The file itself, with links followed. Throws ReadError when it cannot be read.
std::filesystem::path FindModel(const std::string& path) {
    std::error_code fault;
    const auto kind = std::filesystem::status(path, fault).type();
    if (kind != std::filesystem::file_type::regular && kind != std::filesystem::file_type::directory &&
        kind != std::filesystem::file_type::not_found && !fault) {
        throw ReadError(path, "cannot be read as a model: it is no ordinary file");
    }
    static_cast<void>(OpenInputFile(path));  // for its messages: the library's own do not say why
    std::filesystem::path file = std::filesystem::canonical(path, fault);
    if (fault) {
        throw ReadError(path, "cannot be read: " + fault.message());
    }
    return file;
}

// In the child: the model or the fault as bytes.
std::string AnswerFor(const std::filesystem::path& file, const ModelOptions& options) {
    try {
        const ImportedModel imported = ImportModel(file, options);
        return ModelAnswer + OneLine(imported.refusedFile) + '\n' + EncodeModel(imported.model);
    } catch (const std::exception& fault) {
        return FaultAnswer + std::string(fault.what());
    }
}

scene::Model TakeModel(const std::string& answer, const ModelOptions& options) {
    const std::size_t lineEnd = answer.find('\n');
    if (answer.empty() || answer.front() != ModelAnswer || lineEnd == std::string::npos) {
        throw ModelFault(answer.empty() ? "its reader gave no answer" : answer.substr(1));
    }
    scene::Model model = DecodeModel(std::string_view(answer).substr(lineEnd + 1));
    if (lineEnd > 1 && options.tellNote) {
        options.tellNote("refers to " + OneLine(answer.substr(1, lineEnd - 1)) +
                         ", which lies outside its folder and was not read; --model-references allows it");
    }
    return model;
}

}  // namespace

std::shared_ptr<const scene::Model> LoadModelFile(const std::string& path, const ModelOptions& options) {
    const std::filesystem::path file = FindModel(path);
    try {
        const std::string answer = RunInWorker([&] { return AnswerFor(file, options); }, options.limits);
        auto model = std::make_shared<scene::Model>(TakeModel(answer, options));
        model->name = std::filesystem::path(path).stem().string();
        return model;
    } catch (const ModelFault& fault) {
        throw ReadError(path, "cannot be read as a model: " + OneLine(fault.what()));
    } catch (const WorkerError& fault) {
        throw ReadError(path, "cannot be read as a model: " + OneLine(fault.what()));
    }
}

}  // namespace replay
