#include "app/program_pages.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <sstream>
#include <vector>

#include "base/text.h"
#include "desk/version.h"

namespace quorvelant {

namespace {

// A line for the formatter: backslashes and hyphens as they stand, no line taken for a request.
std::string Roff(std::string_view text) {
  std::string line;
  for (const char letter : text) {
    if (letter == '\\') {
      line += "\\e";
    } else if (letter == '-') {
      line += "\\-";
    } else {
      line += letter;
    }
  }
  return line.starts_with('.') || line.starts_with('\'') ? "\\&" + line : line;
}

std::string PageHead(std::string_view name, std::string_view what) {
  return fmt::format(".TH {} 1 \"\" \"Quorvelant {}\" \"User Commands\"\n.SH NAME\n{} \\- {}\n",
                     Roff(Upper(name)), ProgramVersion(), Roff(name), Roff(what));
}

bool IsHelp(const CLI::Option& option) {
  return option.check_lname("help");
}

// The words that an option takes alone: "TEXT:{players,classic}".
std::vector<std::string> WordsOf(const CLI::Option& option) {
  const std::string type = option.get_type_name();
  const auto open = type.find('{');
  const auto close = type.find('}');
  std::vector<std::string> words;
  if (open != std::string::npos && close != std::string::npos) {
    const std::string_view list = std::string_view{type}.substr(open + 1, close - open - 1);
    for (const std::string_view word : Split(list, ",")) {
      words.emplace_back(word);
    }
  }
  return words;
}

// What stands for the value of an option or argument: "FILE", or the words to choose from.
std::string ValueOf(const CLI::Option& option) {
  const std::vector<std::string> words = WordsOf(option);
  const std::string type = option.get_type_name();
  return words.empty() ? type.substr(0, type.find(':')) : fmt::format("{}", fmt::join(words, "|"));
}

std::vector<std::string> NamesOf(const CLI::Option& option) {
  std::vector<std::string> names;
  for (const std::string& name : option.get_snames()) {
    names.push_back("-" + name);
  }
  for (const std::string& name : option.get_lnames()) {
    names.push_back("--" + name);
  }
  return names;
}

std::string OptionEntry(const CLI::Option& option) {
  std::string heads;
  for (const std::string& name : NamesOf(option)) {
    heads += fmt::format("{}\\fB{}\\fR", heads.empty() ? "" : ", ", Roff(name));
  }
  if (option.get_positional()) {
    heads = fmt::format("\\fI{}\\fR", Roff(option.get_name(true)));
  } else if (option.get_type_size() != 0) {
    heads += fmt::format(" \\fI{}\\fR", Roff(ValueOf(option)));
  }
  return fmt::format(".TP\n{}\n{}{}\n", heads, Roff(option.get_description()),
                     option.get_required() ? ". Needed." : ".");
}

std::string Usage(const CLI::App& program, const CLI::App& command) {
  std::string line = fmt::format("\\fB{} {}\\fR", Roff(program.get_name()), Roff(command.get_name()));
  for (const CLI::Option* option : command.get_options()) {
    if (!option->get_positional() && option->get_required()) {
      line += fmt::format(R"( \fB{}\fR \fI{}\fR)", Roff(NamesOf(*option).front()), Roff(ValueOf(*option)));
    }
  }
  line += " [\\fIOPTIONS\\fR]";
  for (const CLI::Option* option : command.get_options()) {
    if (option->get_positional()) {
      line += fmt::format(" \\fI{}\\fR", Roff(option->get_name(true)));
    }
  }
  return line;
}

std::string CommandSection(const CLI::App& program, const CLI::App& command) {
  std::string page = fmt::format(".SS {}\n{}\n.PP\n{}.\n", Roff(command.get_name()), Usage(program, command),
                                 Roff(command.get_description()));
  for (const CLI::Option* option : command.get_options()) {
    if (!IsHelp(*option)) {
      page += OptionEntry(*option);
    }
  }
  return page;
}

std::vector<const CLI::App*> CommandsOf(const CLI::App& program) {
  return program.get_subcommands([](const CLI::App*) { return true; });
}

// "  --version     Prints it": the head and what stands after the gap, which is empty in a line without.
std::pair<std::string, std::string> HelpLine(const std::string& line) {
  const auto start = line.find_first_not_of(' ');
  const auto gap = line.find("  ", start);
  if (gap == std::string::npos) {
    return {line.substr(start), {}};
  }
  return {line.substr(start, gap - start), line.substr(line.find_first_not_of(' ', gap))};
}

constexpr std::string_view SeeAlso =
    ".SH SEE ALSO\n\\fBquorvelant\\fR(1), \\fBquorvelant\\-window\\fR(1), and the pages in\n"
    "\\fI/usr/share/doc/quorvelant\\fR\n";

}  // namespace

std::string ManPage(const CLI::App& program) {
  const std::string& name = program.get_name();
  std::string page = PageHead(name, "author DVD-Video discs from a project, or make the project");
  page += fmt::format(
      ".SH SYNOPSIS\n\\fB{0}\\fR \\fICOMMAND\\fR [\\fIOPTIONS\\fR] \\fI...\\fR\n.br\n"
      "\\fB{0}\\fR [\\fB\\-\\-help\\fR|\\fB\\-\\-version\\fR]\n.SH DESCRIPTION\n{1}\n",
      Roff(name), Roff(program.get_description()));
  page += ".SH COMMANDS\n";
  for (const CLI::App* command : CommandsOf(program)) {
    page += CommandSection(program, *command);
  }
  page += ".SH NOTES\n";
  std::istringstream notes(program.get_footer());
  for (std::string line; std::getline(notes, line);) {
    page += Roff(line) + "\n.br\n";
  }
  return page.append(SeeAlso);
}

std::string ManPageOfHelp(std::string_view name, std::string_view help) {
  std::istringstream lines{std::string(help)};
  std::string what;
  std::getline(lines, what);
  const std::string plain = what.ends_with('.') ? what.substr(0, what.size() - 1) : what;
  std::string page = PageHead(name, plain);
  bool isEntry = false;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("Usage:")) {
      page += fmt::format(".SH SYNOPSIS\n\\fB{}\\fR\n.SH DESCRIPTION\n{}\n",
                          Roff(std::string(Trim(line.substr(6)))), Roff(what));
    } else if (line.ends_with(':') && !line.starts_with(' ')) {
      page += fmt::format(".SH \"{}\"\n", Roff(line.substr(0, line.size() - 1)));
      isEntry = true;
    } else if (isEntry && line.starts_with("  ")) {
      const auto [head, text] = HelpLine(line);
      page += fmt::format(".TP\n\\fB{}\\fR\n{}\n", Roff(head), Roff(text));
    } else {
      page += line.empty() ? ".PP\n" : Roff(line) + "\n";
    }
  }
  return page.append(SeeAlso);
}

std::string BashCompletion(const CLI::App& program) {
  std::vector<std::string> commands;
  std::string options;  // a branch a command
  std::string words;    // a branch an option with words of its own
  for (const CLI::App* command : CommandsOf(program)) {
    commands.push_back(command->get_name());
    std::vector<std::string> names;
    for (const CLI::Option* option : command->get_options()) {
      std::ranges::copy(NamesOf(*option), std::back_inserter(names));
      const std::vector<std::string> choices = WordsOf(*option);
      if (!choices.empty() && !option->get_positional()) {
        words += fmt::format("    {0}:--{1}) COMPREPLY=($(compgen -W '{2}' -- \"$current\")); return ;;\n",
                             command->get_name(), option->get_lnames().front(), fmt::join(choices, " "));
      }
    }
    options += fmt::format("    {}) options='{}' ;;\n", command->get_name(), fmt::join(names, " "));
  }
  return fmt::format(
      "# bash completion for {0}; made from its commands and options.\n"
      "_{0}() {{\n"
      "  local current=${{COMP_WORDS[COMP_CWORD]}} previous=${{COMP_WORDS[COMP_CWORD - 1]}}\n"
      "  local command=${{COMP_WORDS[1]}} options=\n"
      "  COMPREPLY=()\n"
      "  if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
      "    COMPREPLY=($(compgen -W '{1} --help --version' -- \"$current\"))\n"
      "    return\n"
      "  fi\n"
      "  case $command:$previous in\n{2}  esac\n"
      "  [[ $current == -* ]] || return\n"
      "  case $command in\n{3}  esac\n"
      "  COMPREPLY=($(compgen -W \"$options\" -- \"$current\"))\n"
      "}}\n"
      "# What none of these fit is a file.\n"
      "complete -o default -F _{0} {0}\n",
      program.get_name(), fmt::join(commands, " "), words, options);
}

}  // namespace quorvelant
