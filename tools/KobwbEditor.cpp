// kobwb edit: a line-oriented session over a factory, for a person at a terminal
// or for a script.

#include "KobwbActions.h"
#include "KobwbCommands.h"
#include "KobwbInput.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>

namespace kobwb_tool {

namespace {

class Session {
public:
    // Reads a model file into the factory; exitClean or the status to stop with.
    int Load(const std::string& file);
    // Runs one line; false when the session is over.
    bool Run(const std::string& line);
    bool Failed() const { return m_failed; }

private:
    using Handler = void (Session::*)(const std::string& argument);
    struct Command {
        const char* name;
        const char* arguments;
        const char* summary;
        Handler run;
    };
    static const Command commands[];

    void Help(const std::string&);
    void Show(const std::string&);
    void Add(const std::string& text);
    void Remove(const std::string& id);
    void Variables(const std::string&);
    void Domain(const std::string& assignment);
    void Evaluate(const std::string&);
    void Differentiate(const std::string& name);
    void Simplify(const std::string& mode);
    void Classify(const std::string&);
    void Contract(const std::string&);
    void Print(const std::string& format);
    void Save(const std::string& file);
    void Json(const std::string& setting);

    // Parses model text and adds its equations; false when it holds errors.
    bool AddModel(std::unique_ptr<LoadedModel> loaded);
    void Error(const std::string& message);
    void Answer(const std::string& text) { std::cout << text << std::flush; }

    KOBWBFactory m_factory;
    // The models read so far: the factory's variables were made from their names,
    // which later models look up again.
    std::vector<std::unique_ptr<LoadedModel>> m_models;
    KOBLVRListPKOBWBVarNode m_variableNodes;
    KOBLVRListPKOBWBVariable m_factoryVariables;
    bool m_json = false;
    bool m_failed = false;
};

const Session::Command Session::commands[] = {
    {"help", "", "this list", &Session::Help},
    {"show", "", "the equations, with their ids", &Session::Show},
    {"add", "EQUATION;...", "adds equations written in the model language", &Session::Add},
    {"remove", "ID", "removes the equation of that id", &Session::Remove},
    {"vars", "", "the variables and their domains", &Session::Variables},
    {"domain", "NAME=[LOW,HIGH]|NAME=VALUE|NAME=*", "sets a variable's domain (* for every real)", &Session::Domain},
    {"eval", "", "evaluates every equation over the domains", &Session::Evaluate},
    {"diff", "NAME", "the derivative of every equation by a variable", &Session::Differentiate},
    {"simplify", "[MODE]", "runs the symbolic transformations (mode 4 by default) on the equations", &Session::Simplify},
    {"classify", "", "linear, quadratic or nonlinear, for every equation", &Session::Classify},
    {"contract", "", "narrows the domains with the equations", &Session::Contract},
    {"print", "[FORMAT]", "the equations as text (default), mathml, json or dot", &Session::Print},
    {"save", "FILE", "writes the equations to FILE in the model language", &Session::Save},
    {"json", "on|off", "answers as JSON where a command has a JSON form", &Session::Json},
};

int Session::Load(const std::string& file) {
    auto loaded = std::make_unique<LoadedModel>();
    if (!LoadModel(file, *loaded)) return exitUsage;
    WriteDiagnostics(*loaded, std::cerr);
    return AddModel(std::move(loaded)) ? exitClean : exitProblems;
}

bool Session::AddModel(std::unique_ptr<LoadedModel> loaded) {
    const int status = ConvertModel(*loaded, m_factory, m_variableNodes, m_factoryVariables);
    OpenUnsetVariables(m_factory);
    m_models.push_back(std::move(loaded));
    return status == exitClean;
}

bool Session::Run(const std::string& line) {
    const size_t start = line.find_first_not_of(" \t\r");
    if (start == std::string::npos || line[start] == '#') return true;
    const size_t end = line.find_first_of(" \t\r", start);
    const std::string name = line.substr(start, end == std::string::npos ? std::string::npos : end - start);
    std::string argument;
    if (end != std::string::npos) {
        const size_t from = line.find_first_not_of(" \t\r", end);
        const size_t to = line.find_last_not_of(" \t\r");
        if (from != std::string::npos) argument = line.substr(from, to - from + 1);
    }
    if (name == "quit" || name == "exit") return false;
    for (const Command& command : commands)
        if (name == command.name) {
            (this->*command.run)(argument);
            return true;
        }
    Error("unknown command " + name + " (help lists them)");
    return true;
}

void Session::Error(const std::string& message) {
    std::cout << "error: " << message << '\n' << std::flush;
    m_failed = true;
}

void Session::Help(const std::string&) {
    std::string text;
    for (const Command& command : commands) {
        std::string usage = std::string(command.name) + ' ' + command.arguments;
        usage.resize(usage.size() < 44 ? 44 : usage.size() + 1, ' ');
        text += "  " + usage + command.summary + '\n';
    }
    Answer(text + "  quit                                        ends the session (so does the end of the input)\n");
}

void Session::Show(const std::string&) {
    std::string text;
    for (KOBWBEquation* equation = m_factory.GetFirstEquation(); equation;
         equation = m_factory.GetNextEquation(equation)) {
        text += '[' + std::to_string(equation->GetId()) + "] ";
        KOBWBEquationPrinter::PrintEquation(equation, text);
        text += '\n';
    }
    Answer(text);
}

void Session::Add(const std::string& text) {
    if (text.empty()) return Error("add needs equations, such as: add x + y = 10;");
    auto loaded = std::make_unique<LoadedModel>();
    LoadModelText("add", text, *loaded);
    for (const Diagnostic& problem : loaded->diagnostics)
        if (problem.error) Error("column " + std::to_string(problem.column) + ": " + problem.message);
    if (loaded->errors > 0) return;
    const int before = m_factory.GetNbOfEquations();
    if (!AddModel(std::move(loaded))) return Error("some equations could not be converted");
    std::string answer;
    KOBWBEquation* equation = m_factory.GetFirstEquation();
    for (int i = 0; equation && i < before; ++i) equation = m_factory.GetNextEquation(equation);
    for (; equation; equation = m_factory.GetNextEquation(equation)) {
        answer += "added [" + std::to_string(equation->GetId()) + "] ";
        KOBWBEquationPrinter::PrintEquation(equation, answer);
        answer += '\n';
    }
    Answer(answer);
}

void Session::Remove(const std::string& id) {
    char* end = nullptr;
    const long wanted = std::strtol(id.c_str(), &end, 10);
    if (id.empty() || *end != '\0') return Error("remove needs an equation id, as show lists them");
    for (KOBWBEquation* equation = m_factory.GetFirstEquation(); equation;
         equation = m_factory.GetNextEquation(equation))
        if (equation->GetId() == wanted) {
            m_factory.RemoveEquation(equation);
            return Answer("removed [" + id + "]\n");
        }
    Error("no equation of id " + id);
}

void Session::Variables(const std::string&) {
    std::string text;
    WriteVariables(m_factory, m_json, text);
    Answer(text);
}

void Session::Domain(const std::string& assignment) {
    const std::string problem = SetDomain(m_factory, assignment);
    if (!problem.empty()) return Error(problem);
}

void Session::Evaluate(const std::string&) {
    std::string text;
    WriteEvaluation(m_factory, m_json, text);
    Answer(text);
}

void Session::Differentiate(const std::string& name) {
    std::string text;
    if (!WriteDerivatives(m_factory, name, m_json, text)) return Error("no variable " + name);
    Answer(text);
}

void Session::Simplify(const std::string& mode) {
    char* end = nullptr;
    const long value = mode.empty() ? 4 : std::strtol(mode.c_str(), &end, 10);
    if (!mode.empty() && (*end != '\0' || value < 0 || value > 31)) return Error("bad mode " + mode + " (0 to 31)");
    if (!RunSimplify(m_factory, static_cast<unsigned>(value))) return Error("the transformations could not be made");
    Show("");
}

void Session::Classify(const std::string&) {
    std::string text;
    WriteClassification(m_factory, m_json, text);
    Answer(text);
}

void Session::Contract(const std::string&) {
    std::string text;
    RunContract(m_factory, m_json, text);
    Answer(text);
}

void Session::Print(const std::string& format) {
    const std::string chosen = format.empty() ? "text" : format;
    std::string text;
    if (!WriteSystem(m_factory, chosen, text)) return Error("unknown format " + chosen + " (" + SystemFormats() + ")");
    Answer(text);
}

void Session::Save(const std::string& file) {
    if (file.empty()) return Error("save needs a file name");
    std::ofstream out(file, std::ios::binary);
    out << KOBWBEquationPrinter::ToText(m_factory);
    out.close();
    if (!out) return Error("cannot write " + file);
    Answer("saved " + std::to_string(m_factory.GetNbOfEquations()) + " equations to " + file + "\n");
}

void Session::Json(const std::string& setting) {
    if (setting != "on" && setting != "off") return Error("json on or json off");
    m_json = setting == "on";
}

} // namespace

int Edit(const std::vector<std::string>& arguments) {
    for (const std::string& argument : arguments)
        if (argument == "--help" || argument == "-h") return std::cout << UsageOf("edit"), exitClean;
    if (arguments.size() > 1) return std::cerr << "kobwb edit: one file at most\n" << UsageOf("edit"), exitUsage;
    Session session;
    if (!arguments.empty())
        if (const int loaded = session.Load(arguments.front())) return loaded;
    const bool prompt = isatty(STDIN_FILENO) != 0;
    std::string line;
    while (true) {
        if (prompt) std::cout << "kobwb> " << std::flush;
        if (!std::getline(std::cin, line) || !session.Run(line)) break;
    }
    return session.Failed() ? exitProblems : exitClean;
}

} // namespace kobwb_tool
