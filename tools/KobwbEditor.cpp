// kobwb edit: a line-oriented session over a factory, for a person at a terminal
// or for a script.

#include "KobwbActions.h"
#include "KobwbCommands.h"
#include "KobwbInput.h"
#include "KobwbMode.h"
#include "KobwbSimplification.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>

namespace kobwb_tool {

namespace {

// The commands undo can take back, at most.
constexpr size_t undoDepth = 100;

class Session {
public:
    Session() { Clear(); }
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
        // Whether the command changes the system, so that undo can take it back.
        bool changes;
    };
    static const Command commands[];

    // The system as text, the definitions of the variables eliminated, and the
    // domains: what undo restores.
    struct Snapshot {
        std::string equations;
        std::vector<std::pair<std::string, std::string>> definitions;
        std::vector<std::pair<std::string, KOBWBValue>> domains;
    };

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
    void Undo(const std::string&);
    void Json(const std::string& setting);

    // An empty system.
    void Clear();
    // Parses model text and adds its equations; false when it holds errors.
    bool AddModel(std::unique_ptr<LoadedModel> loaded);
    Snapshot Take() const;
    void Restore(const Snapshot& snapshot);
    // The equations, then each eliminated variable as NAME = EXPRESSION;.
    std::string SystemText() const;
    void Error(const std::string& message);
    void Answer(const std::string& text) { std::cout << text << std::flush; }

    std::unique_ptr<KOBWBFactory> m_factory;
    // The models read so far: the factory's variables were made from their names,
    // which later models look up again.
    std::vector<std::unique_ptr<LoadedModel>> m_models;
    std::unique_ptr<KOBLVRListPKOBWBVarNode> m_variableNodes;
    std::unique_ptr<KOBLVRListPKOBWBVariable> m_factoryVariables;
    ModelSource m_source;
    // The variables eliminated by simplify, with their expressions, in order.
    std::vector<std::pair<std::string, std::string>> m_definitions;
    std::vector<Snapshot> m_undo;
    bool m_json = false;
    bool m_failed = false;
};

const Session::Command Session::commands[] = {
    {"help", "", "this list", &Session::Help, false},
    {"show", "", "the equations, with their ids, and the variables eliminated", &Session::Show, false},
    {"add", "EQUATION;...", "adds equations written in the model language", &Session::Add, true},
    {"remove", "ID", "removes the equation of that id", &Session::Remove, true},
    {"vars", "", "the variables and their domains", &Session::Variables, false},
    {"domain", "NAME=[LOW,HIGH]|NAME=VALUE|NAME=*", "sets a variable's domain (* for every real)", &Session::Domain, true},
    {"eval", "", "evaluates every equation over the domains", &Session::Evaluate, false},
    {"diff", "NAME [raw]", "the derivative of every equation by a variable, simplified unless raw",
     &Session::Differentiate, false},
    {"simplify", "[MODE]", "runs the symbolic transformations (mode 4 by default; kobwb simplify --help tells the bits)",
     &Session::Simplify, true},
    {"classify", "", "linear, quadratic or nonlinear, for every equation", &Session::Classify, false},
    {"contract", "", "narrows the domains with the equations", &Session::Contract, true},
    {"print", "[FORMAT]", "the equations as text (default), mathml, json or dot", &Session::Print, false},
    {"save", "FILE", "writes the equations and the variables eliminated to FILE in the model language",
     &Session::Save, false},
    {"undo", "", "restores the system as it was before the last command that changed it", &Session::Undo, false},
    {"json", "on|off", "answers as JSON where a command has a JSON form", &Session::Json, false},
};

void Session::Clear() {
    m_factory = std::make_unique<KOBWBFactory>();
    m_models.clear();
    m_variableNodes = std::make_unique<KOBLVRListPKOBWBVarNode>();
    m_factoryVariables = std::make_unique<KOBLVRListPKOBWBVariable>();
    m_definitions.clear();
}

int Session::Load(const std::string& file) {
    auto loaded = std::make_unique<LoadedModel>();
    if (!LoadModel(file, *loaded)) return exitUsage;
    WriteDiagnostics(*loaded, std::cerr);
    return AddModel(std::move(loaded)) ? exitClean : exitProblems;
}

bool Session::AddModel(std::unique_ptr<LoadedModel> loaded) {
    const int status = ConvertModel(*loaded, *m_factory, *m_variableNodes, *m_factoryVariables, m_source);
    OpenUnsetVariables(*m_factory);
    m_models.push_back(std::move(loaded));
    return status == exitClean;
}

Session::Snapshot Session::Take() const {
    Snapshot snapshot{KOBWBEquationPrinter::ToText(*m_factory), m_definitions, {}};
    for (int i = 0; i < m_factory->GetNbOfVariables(); ++i)
        if (KOBWBVariable* variable = m_factory->GetVariable(i))
            snapshot.domains.emplace_back(variable->GetName().str(), variable->GetExprValue());
    return snapshot;
}

void Session::Restore(const Snapshot& snapshot) {
    Clear();
    m_source.ForgetLines();
    auto loaded = std::make_unique<LoadedModel>();
    LoadModelText("undo", snapshot.equations, *loaded);
    if (!AddModel(std::move(loaded))) Error("the system before the last command did not read back whole");
    // Variables without equations come back only through their domains.
    for (const auto& domain : snapshot.domains)
        if (KOBWBVariable* variable = m_factory->GetVariable(KOBLVRString(domain.first.c_str())))
            variable->SetExprValue(domain.second);
    m_definitions = snapshot.definitions;
}

std::string Session::SystemText() const {
    std::string text = KOBWBEquationPrinter::ToText(*m_factory);
    for (const auto& definition : m_definitions) text += definition.first + " = " + definition.second + ";\n";
    return text;
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
            if (command.changes) {
                if (m_undo.size() == undoDepth) m_undo.erase(m_undo.begin());
                m_undo.push_back(Take());
            }
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
    text += "  quit                                        ends the session (so does the end of the input)\n"
            "Functions of the model language:";
    for (int i = 0; i < KOBWBGetNbOfFunctionNames(); ++i) {
        const KOBWBFunctionName* function = KOBWBGetFunctionNameRow(i);
        if (function->read) text += std::string(" ") + function->name;
    }
    Answer(text + "\n");
}

void Session::Show(const std::string&) {
    std::string text;
    for (KOBWBEquation* equation = m_factory->GetFirstEquation(); equation;
         equation = m_factory->GetNextEquation(equation)) {
        text += '[' + std::to_string(equation->GetId()) + "] ";
        KOBWBEquationPrinter::PrintEquation(equation, text);
        text += '\n';
    }
    for (const auto& definition : m_definitions) text += definition.first + " := " + definition.second + '\n';
    Answer(text);
}

void Session::Add(const std::string& text) {
    if (text.empty()) return Error("add needs equations, such as: add x + y = 10;");
    auto loaded = std::make_unique<LoadedModel>();
    LoadModelText("add", text, *loaded);
    for (const Diagnostic& problem : loaded->diagnostics)
        if (problem.error) Error("column " + std::to_string(problem.column) + ": " + problem.message);
    if (loaded->errors > 0) return;
    const int before = m_factory->GetNbOfEquations();
    if (!AddModel(std::move(loaded))) return Error("some equations could not be converted");
    std::string answer;
    KOBWBEquation* equation = m_factory->GetFirstEquation();
    for (int i = 0; equation && i < before; ++i) equation = m_factory->GetNextEquation(equation);
    for (; equation; equation = m_factory->GetNextEquation(equation)) {
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
    for (KOBWBEquation* equation = m_factory->GetFirstEquation(); equation;
         equation = m_factory->GetNextEquation(equation))
        if (equation->GetId() == wanted) {
            m_factory->RemoveEquation(equation);
            return Answer("removed [" + id + "]\n");
        }
    Error("no equation of id " + id);
}

void Session::Variables(const std::string&) {
    std::string text;
    WriteVariables(*m_factory, m_source, m_json, text);
    Answer(text);
}

void Session::Domain(const std::string& assignment) {
    const std::string problem = SetDomain(*m_factory, assignment);
    if (!problem.empty()) return Error(problem);
}

void Session::Evaluate(const std::string&) {
    std::string text;
    WriteEvaluation(*m_factory, m_json, text);
    Answer(text);
}

void Session::Differentiate(const std::string& argument) {
    const size_t blank = argument.find(' ');
    const std::string name = argument.substr(0, blank);
    const std::string option = blank == std::string::npos ? "" : argument.substr(argument.find_first_not_of(' ', blank));
    if (!option.empty() && option != "raw") return Error("diff NAME or diff NAME raw");
    std::string text;
    if (!WriteDerivatives(*m_factory, name, option == "raw", m_json, text)) return Error("no variable " + name);
    Answer(text);
}

void Session::Simplify(const std::string& text) {
    unsigned mode = defaultMode;
    if (!text.empty()) {
        const std::string problem = ParseMode(text, mode);
        if (!problem.empty()) return Error(problem);
    }
    SimplifyReport report;
    if (!RunSimplify(*m_factory, mode, report)) return Error("the transformations could not be made");
    m_definitions.insert(m_definitions.end(), report.definitions.begin(), report.definitions.end());
    std::string answer;
    for (KOBWBEquation* equation = m_factory->GetFirstEquation(); equation;
         equation = m_factory->GetNextEquation(equation)) {
        answer += '[' + std::to_string(equation->GetId()) + "] ";
        KOBWBEquationPrinter::PrintEquation(equation, answer);
        answer += '\n';
    }
    WriteSimplifyReport(report, answer);
    Answer(answer);
}

void Session::Classify(const std::string&) {
    std::string text;
    WriteClassification(*m_factory, m_json, text);
    Answer(text);
}

void Session::Contract(const std::string&) {
    std::string text;
    RunContract(*m_factory, m_source, m_json, text);
    Answer(text);
}

void Session::Print(const std::string& format) {
    const std::string chosen = format.empty() ? "text" : format;
    std::string text;
    if (!WriteSystem(*m_factory, chosen, text)) return Error("unknown format " + chosen + " (" + SystemFormats() + ")");
    Answer(text);
}

void Session::Save(const std::string& file) {
    if (file.empty()) return Error("save needs a file name");
    std::ofstream out(file, std::ios::binary);
    out << SystemText();
    out.close();
    if (!out) return Error("cannot write " + file);
    std::string answer = "saved " + std::to_string(m_factory->GetNbOfEquations()) + " equations";
    if (!m_definitions.empty())
        answer += " and " + std::to_string(m_definitions.size()) + " variables eliminated";
    Answer(answer + " to " + file + "\n");
}

void Session::Undo(const std::string&) {
    if (m_undo.empty()) return Error("nothing to undo");
    const Snapshot snapshot = std::move(m_undo.back());
    m_undo.pop_back();
    Restore(snapshot);
    Answer("undone\n");
}

void Session::Json(const std::string& setting) {
    if (setting != "on" && setting != "off") return Error("json on or json off");
    m_json = setting == "on";
}

} // namespace

int Edit(const Invocation& invocation) {
    Session session;
    if (!invocation.files.empty())
        if (const int loaded = session.Load(invocation.files.front())) return loaded;
    const bool prompt = isatty(STDIN_FILENO) != 0;
    std::string line;
    while (true) {
        if (prompt) std::cout << "kobwb> " << std::flush;
        if (!std::getline(std::cin, line) || !session.Run(line)) break;
    }
    return session.Failed() ? exitProblems : exitClean;
}

} // namespace kobwb_tool
