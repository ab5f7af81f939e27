// dorvoform: a host application on the command line. It reaches the library as any other host does.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "automation/host_entry.h"
#include "host/client.h"
#include "host/commands.h"
#include "practice/practice.h"

namespace dorvo::host {
namespace {

// A connection text from where a process listing does not show it.
std::string first_line_of(const std::string& file) {
  std::ifstream in(file);
  std::string line;
  if (!std::getline(in, line)) throw RunError("Cannot read a connection text from \"" + file + "\"");
  if (line.ends_with('\r')) line.pop_back();
  if (line.starts_with("\xEF\xBB\xBF")) line.erase(0, 3);  // as some editors begin a text
  return line;
}

std::string environment(const std::string& variable) {
  const char* text = std::getenv(variable.c_str());
  if (!text) throw UsageError("the environment has no variable " + variable);
  return text;
}

std::string options_of_formats() {
  std::string text = "Options of formats:";
  DorvoEachOutputOption(
      [](void* all, const char* line) { *static_cast<std::string*>(all) += "\n  " + std::string(line); }, &text);
  return text;
}

// A command that opens a report: `print` or `preview`.
struct ReportCommand {
  PrintJob job;
  std::string database_file;
  std::string database_variable;
  std::vector<std::string> settings;
  std::vector<std::string> properties;
  CLI::Option* settings_option = nullptr;
  CLI::Option* properties_option = nullptr;
  CLI::App* app = nullptr;

  ReportCommand(CLI::App& program, const char* name, const char* told);
  void add_files();
  int run(int (*open)(const PrintJob&));

 private:
  std::vector<Assignment> in_order_given() const;
};

ReportCommand::ReportCommand(CLI::App& program, const char* name, const char* told)
    : app(program.add_subcommand(name, told)) {
  auto* from = app->add_option_group("database", "Where the figures are, one of:")->require_option(1);
  from->add_option("--db", job.database, "Connection text, or the path of a database file")->type_name("TEXT");
  from->add_option("--db-file", database_file, "File whose first line is the connection text")->type_name("FILE");
  from->add_option("--db-env", database_variable, "Environment variable that holds it")->type_name("NAME");
  auto* what = app->add_option_group("report", "What to print, one of:")->require_option(1);
  what->add_option("--class", job.class_name, "Launcher class, as clsForm1")->type_name("CLASS");
  what->add_option("--report", job.report, "Report class, as Form1; for checks and layout authors")->type_name("NAME");
  settings_option = app->add_option("--settings", settings, "Property of generalPrintClass, in the order given")
                        ->type_name("NAME=VALUE")
                        ->allow_extra_args(false);
  properties_option = app->add_option("--set", properties, "Property of the launcher, in the order given")
                          ->type_name("NAME=VALUE")
                          ->allow_extra_args(false);
  app->add_option("--layouts", job.layouts, "Folder whose layouts are used instead of the built-in ones")
      ->type_name("DIR")
      ->check(CLI::Validator(CLI::ExistingDirectory).description(""));
}

void ReportCommand::add_files() {
  std::string kinds;
  DorvoEachOutputKind([](void* all, const char* kind) { *static_cast<std::string*>(all) += " ." + std::string(kind); },
                      &kinds);
  app->add_option("--out", job.outputs, "File to write, its kind by its extension:" + kinds)
      ->type_name("FILE")
      ->required();
  app->footer(options_of_formats());
  app->add_option("--option", job.options, "Property of a format's filter, as PDF.Version=0; see below")
      ->type_name("FORMAT.NAME=VALUE")
      ->allow_extra_args(false);
}

std::vector<Assignment> ReportCommand::in_order_given() const {
  std::vector<Assignment> all;
  std::size_t setting = 0;
  std::size_t property = 0;
  for (const CLI::Option* option : app->parse_order()) {
    if (option != settings_option && option != properties_option) continue;
    const bool is_setting = option == settings_option;
    const std::string& text = is_setting ? settings[setting++] : properties[property++];
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos) throw UsageError("\"" + text + "\": expected NAME=VALUE");
    all.push_back({is_setting, text.substr(0, equals), text.substr(equals + 1)});
  }
  return all;
}

int ReportCommand::run(int (*open)(const PrintJob&)) {
  job.assignments = in_order_given();
  if (!database_file.empty()) job.database = first_line_of(database_file);
  if (!database_variable.empty()) job.database = environment(database_variable);
  return open(job);
}

void describe_demo(CLI::App& program, DemoPractice& demo) {
  const practice::Options usual;
  demo = {.file = {}, .dealers = usual.dealers, .years = usual.years, .seed = usual.seed};
  CLI::App* app = program.add_subcommand("demo-db", "Writes a sample practice: invented dealers and their returns");
  app->add_option("FILE", demo.file, "Database file to write")->required();
  app->add_option("--dealers", demo.dealers, "Invented dealers beside the described ones")->capture_default_str();
  app->add_option("--years", demo.years, "Accounting years")->capture_default_str();
  app->add_option("--seed", demo.seed, "The same seed gives the same file")->capture_default_str();
}

void describe_schema(CLI::App& program, std::string& dialect) {
  CLI::App* app = program.add_subcommand("schema", "Writes the statements that make the tables the reports read");
  app->add_option("DIALECT", dialect, "sqlite, sqlserver or postgresql")->required();
}

int run(int argc, char** argv) {
  CLI::App program("Prints and shows the statutory forms and reports of a practice", "dorvoform");
  program.set_version_flag("--version", std::string("dorvoform ") + DorvoVersion());
  program.require_subcommand(0, 1);
  ReportCommand print_command(program, "print", "Prints a report to files");
  print_command.add_files();
  ReportCommand preview_command(program, "preview", "Shows a report in a window, until the last window is closed");
  DemoPractice demo;
  program.add_subcommand("classes", "Lists the launcher classes with their members");
  program.add_subcommand("reports", "Lists the report classes and whether they are built");
  describe_demo(program, demo);
  std::string dialect;
  describe_schema(program, dialect);
  try {
    program.parse(argc, argv);
  } catch (const CLI::Success& asked) {
    return program.exit(asked);
  } catch (const CLI::ParseError& error) {
    throw UsageError(error.what());
  }
  if (program.get_subcommands().empty())
    throw UsageError("a command is required: print, preview, classes, reports, demo-db or schema");
  if (program.got_subcommand("print")) return print_command.run(print);
  if (program.got_subcommand("preview")) return preview_command.run(preview);
  if (program.got_subcommand("classes")) return list_classes();
  if (program.got_subcommand("schema")) return write_schema(dialect);
  return program.got_subcommand("reports") ? list_reports() : write_demo_database(demo);
}

// A list that was cut short is no success.
int with_output_written(int status) {
  if (std::fflush(stdout) == 0 && !std::ferror(stdout)) return status;
  tell("Cannot write to the standard output");
  return kFailed;
}

}  // namespace

void tell(const std::string& text) {
  std::string line = text;
  for (char& c : line) {
    if (c == '\r' || c == '\n') c = ' ';
  }
  std::fprintf(stderr, "dorvoform: %s\n", line.c_str());
}

}  // namespace dorvo::host

int main(int argc, char** argv) {
  using namespace dorvo::host;
  try {
    return with_output_written(run(argc, argv));
  } catch (const UsageError& error) {
    tell(error.what());
    return kUsage;
  } catch (const std::exception& error) {
    tell(error.what());
    return kFailed;
  }
}
