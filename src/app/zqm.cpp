// SPDX-License-Identifier: GPL-3.0-or-later
// The command line.
#include <CLI/CLI.hpp>
#include <QFile>
#include <QGuiApplication>
#include <functional>
#include <optional>

#include "app/commands/commands.h"
#include "shell/error.h"
#include "shell/file_info.h"
#include "shell/locale_info.h"

namespace {

using namespace zqm;

QString ToText(const std::string& bytes) {
  return QFile::decodeName(bytes.c_str());
}

QStringList ToTexts(const std::vector<std::string>& list) {
  QStringList texts;
  for (const std::string& bytes : list)
    texts.append(ToText(bytes));
  return texts;
}

/// The options as the parser fills them, of all commands together.
struct Arguments {
  std::string home, catalogue;
  bool json = false;
  std::vector<std::string> files;
  bool recursive = false;
  std::string notes, author, date;
  std::string file, out, templateName;
  std::string kind;
  std::string keywords, from, to, column, name, oldFolder, newFolder;
  bool any = false, printSql = false, overwrite = false, preview = false;
  std::optional<std::string> text, searchFor, newName;
  std::string start = "1", replaceBy;
  std::vector<std::string> ratings, categories, filters, settings;
  std::string title, subject;
  std::optional<std::string> pdfName;
  int compression = static_cast<int>(PdfCompression::Jpeg);
  std::optional<std::string> setNotes, setAuthor, setDate, setRating, setCategories, setTags,
      setFlag;

  std::string layout, copies = "1", paper = "A4";
  std::string format, turn, dpi = "72", filter = "Fast linear";
  std::optional<std::string> toFolder, width, height;
  int sharpen = 0;
  bool catalogueOutput = false;

  PictureOutput Output() const;
  ResizeFiles Resize() const;
  GlobalOptions Global() const { return {ToText(home), ToText(catalogue)}; }
  Console MakeConsole() const { return Console(json); }
};

using Command = std::function<int()>;

const CLI::Validator kNotEmpty(
    [](const std::string& text) { return text.empty() ? std::string("is empty") : std::string(); },
    "");

void AddPaths(CLI::App& command, const char* name, std::vector<std::string>& paths,
              const char* description, bool required = true) {
  command.add_option(name, paths, description)->required(required)->check(kNotEmpty);
}

/// Whether the argument is an option of any command that takes the next argument as its value.
bool TakesValue(const CLI::App& app, const std::string& argument) {
  const auto takes = [&argument](const CLI::App& owner) {
    const CLI::Option* option = owner.get_option_no_throw(argument);
    return option != nullptr && option->get_items_expected_max() > 0;
  };
  if (!argument.starts_with("-")) return false;
  const auto commands = app.get_subcommands([](const CLI::App*) { return true; });
  return takes(app) || std::ranges::any_of(commands, [&](const CLI::App* c) { return takes(*c); });
}

/// Whether the arguments are those of a command that takes any number of paths.
bool TakesPaths(const CLI::App& app, const std::vector<std::string>& arguments) {
  const auto commands = app.get_subcommands([](const CLI::App*) { return true; });
  for (const std::string& argument : arguments) {
    const auto command = std::ranges::find(commands, argument, &CLI::App::get_name);
    if (command == commands.end()) continue;
    const auto lists = (*command)->get_options([](const CLI::Option* o) {
      return o->get_positional() && o->get_items_expected_max() > 1;
    });
    return !lists.empty();
  }
  return false;
}

/// The parser would take a path "[2020]" for a list in brackets; "./[2020]" is the same path to us.
/// In reverse order, as the parser wants them.
std::vector<std::string> ReversedArguments(const CLI::App& app, int argc, char** argv) {
  std::vector<std::string> arguments(argv + 1, argv + argc);
  const bool paths = TakesPaths(app, arguments);
  for (std::size_t i = 0; paths && i < arguments.size(); ++i)
    if (arguments[i].starts_with("[") && (i == 0 || !TakesValue(app, arguments[i - 1])))
      arguments[i].insert(0, "./");
  std::ranges::reverse(arguments);
  return arguments;
}

std::optional<QString> ToText(const std::optional<std::string>& bytes) {
  return bytes ? std::optional(ToText(*bytes)) : std::nullopt;
}

/// What a command does when it is the chosen one.
void Does(CLI::App* command, Command& chosen, Command does) {
  command->callback([&chosen, does = std::move(does)] { chosen = does; });
}

void DeclareGlobal(CLI::App& app, Arguments& a) {
  app.require_subcommand(1);
  app.set_version_flag("--version", ProgramVersion().toStdString());
  app.add_option("--home", a.home, "Keep documents, settings and scratch files under DIR")
      ->type_name("DIR")
      ->check(kNotEmpty);
  app.add_option("--catalogue", a.catalogue, "The catalogue to use, with or without .mdb")
      ->type_name("NAME");
  app.add_flag("--json", a.json, "Print the result as one JSON document");
}

void DeclareFiles(CLI::App& app, Arguments& a, Command& chosen) {
  auto* catalog = app.add_subcommand("catalog", "Add the photos of folders to the catalogue");
  catalog->add_flag("--recursive", a.recursive, "Visit the folders below as well");
  catalog->add_option("--notes", a.notes, "Notes for all added photos")->type_name("TEXT");
  catalog->add_option("--author", a.author, "Author of all added photos")->type_name("TEXT");
  catalog->add_option("--date", a.date, "Date of all added photos, day first: dd/mm/yyyy")
      ->type_name("DATE");
  AddPaths(*catalog, "FOLDER", a.files, "Folders, or single files", false);
  Does(catalog, chosen, [&a] {
    return RunCatalog(
        a.Global(),
        {ToTexts(a.files), a.recursive, ToText(a.notes), ToText(a.author), ToText(a.date)},
        a.MakeConsole());
  });

  auto* info = app.add_subcommand("info", "Print the metadata of files");
  AddPaths(*info, "FILE", a.files, "Photo files");
  Does(info, chosen, [&a] { return RunInfo(ToTexts(a.files), a.MakeConsole()); });

  auto* row = app.add_subcommand("row", "Print what the catalogue holds of files");
  AddPaths(*row, "FILE", a.files, "Catalogued photo files");
  Does(row, chosen, [&a] { return RunRow(a.Global(), ToTexts(a.files), a.MakeConsole()); });

  auto* thumbnail =
      app.add_subcommand("thumbnail", "Write a row's stored thumbnail to a JPEG file");
  thumbnail->add_option("FILE", a.file, "A catalogued photo file")->required()->check(kNotEmpty);
  thumbnail->add_option("OUT", a.out, "The JPEG file to write; must not exist yet")
      ->required()
      ->check(kNotEmpty);
  Does(thumbnail, chosen,
       [&a] { return RunThumbnail(a.Global(), ToText(a.file), ToText(a.out), a.MakeConsole()); });

  auto* demo = app.add_subcommand("demo", "Draw sample photos with metadata; replaces nothing");
  demo->add_option("DIR", a.out, "The folder for the photos; made if it is missing")
      ->required()
      ->check(kNotEmpty);
  Does(demo, chosen, [&a] { return RunDemo(ToText(a.out), a.MakeConsole()); });
}

void DeclareSearch(CLI::App& app, Arguments& a, Command& chosen) {
  auto* search = app.add_subcommand("search", "Print the paths of the photos that match");
  search->add_option("--keywords", a.keywords, "Words, separated by commas")->type_name("WORDS");
  search->add_flag("--any", a.any, "Any of the words instead of all");
  search->add_option("--author", a.author, "Part of the author's name")->type_name("TEXT");
  search->add_option("--from", a.from, "First day")->type_name("DATE");
  search->add_option("--to", a.to, "Last day")->type_name("DATE");
  search->add_option("--rating", a.ratings, "A rating, 1 to 5; repeat for alternatives")
      ->check(CLI::Range(1, 5))
      ->type_name("N")
      ->allow_extra_args(false);
  search->add_option("--category", a.categories, "A category; repeat for alternatives")
      ->type_name("NAME")
      ->allow_extra_args(false);
  search
      ->add_option(
          "--filter", a.filters,
          "A column's value as the catalogue holds it; repeat to narrow by columns, or for "
          "alternatives within one")
      ->type_name("\"COLUMN=VALUE\"")
      ->allow_extra_args(false);
  search->add_flag("--print-sql", a.printSql, "Print the statement and stop");
  Does(search, chosen, [&a] {
    return RunSearch(a.Global(),
                     {ToText(a.keywords), ToText(a.author), ToText(a.from), ToText(a.to), a.any,
                      ToTexts(a.ratings), ToTexts(a.categories), ToTexts(a.filters), a.printSql},
                     a.MakeConsole());
  });

  auto* values = app.add_subcommand("values", "List the values that the catalogue has in a column");
  values->add_option("COLUMN", a.column, "Such as \"Shutter Speed\"")->required();
  Does(values, chosen, [&a] { return RunValues(a.Global(), ToText(a.column), a.MakeConsole()); });
}

void DeclareValues(CLI::App& app, Arguments& a, Command& chosen) {
  auto* set = app.add_subcommand("set", "Give values to catalogued photos; an empty text clears");
  set->add_option("--notes", a.setNotes, "Notes")->type_name("TEXT");
  set->add_option("--author", a.setAuthor, "Author")->type_name("TEXT");
  set->add_option("--date", a.setDate, "Date")->type_name("DATE");
  set->add_option("--rating", a.setRating, "1 to 5")->type_name("N");
  set->add_option("--categories", a.setCategories, "Categories; unknown ones join the list")
      ->type_name("A,B");
  set->add_option("--tags", a.setTags, "Tags")->type_name("TEXT");
  set->add_option("--flag", a.setFlag, "Flagged, Rejected or Unflagged")->type_name("FLAG");
  AddPaths(*set, "FILE", a.files, "Catalogued photo files");
  Does(set, chosen, [&a] {
    return RunSet(a.Global(),
                  {ToText(a.setNotes), ToText(a.setAuthor), ToText(a.setDate), ToText(a.setRating),
                   ToText(a.setCategories), ToText(a.setTags), ToText(a.setFlag), ToTexts(a.files)},
                  a.MakeConsole());
  });

  auto* categories = app.add_subcommand("categories", "List the categories, add or delete one");
  const auto does = [&a](CategoryAction action) {
    return
        [&a, action] { return RunCategories(a.Global(), action, ToText(a.name), a.MakeConsole()); };
  };
  auto* add = categories->add_subcommand("add", "Add a category to the list");
  auto* remove = categories->add_subcommand("delete", "Delete a category that no photo has");
  for (CLI::App* command : {add, remove})
    command->add_option("NAME", a.name, "The category")->required();
  categories->require_subcommand(0, 1);
  // The outer command's turn comes after the inner one's.
  categories->callback([&chosen, does, add, remove] {
    chosen = does(*add      ? CategoryAction::Add
                  : *remove ? CategoryAction::Delete
                            : CategoryAction::List);
  });
}

void DeclareMaintenance(CLI::App& app, Arguments& a, Command& chosen) {
  auto* catalogues = app.add_subcommand("catalogues", "List the catalogues of the home");
  Does(catalogues, chosen, [&a] { return RunCatalogues(a.Global(), a.MakeConsole()); });

  auto* fresh = app.add_subcommand("new", "Make an empty catalogue");
  fresh->add_option("NAME", a.name, "Its name, without .mdb")->required();
  Does(fresh, chosen, [&a] { return RunNew(a.Global(), ToText(a.name), a.MakeConsole()); });

  auto* optimize = app.add_subcommand("optimize", "Write the catalogue anew without its gaps");
  Does(optimize, chosen, [&a] { return RunOptimize(a.Global(), a.MakeConsole()); });

  auto* rebuild = app.add_subcommand("rebuild", "Read metadata and thumbnails of photos again");
  AddPaths(*rebuild, "FILE", a.files, "Catalogued photo files");
  Does(rebuild, chosen, [&a] { return RunRebuild(a.Global(), ToTexts(a.files), a.MakeConsole()); });

  auto* reconnect =
      app.add_subcommand("reconnect", "Tell the catalogue where a moved or renamed folder is now");
  reconnect->add_option("OLD", a.oldFolder, "The folder as the catalogue knows it")
      ->required()
      ->check(kNotEmpty);
  reconnect->add_option("NEW", a.newFolder, "Where its photos are now")
      ->required()
      ->check(kNotEmpty);
  Does(reconnect, chosen, [&a] {
    return RunReconnect(a.Global(), ToText(a.oldFolder), ToText(a.newFolder), a.MakeConsole());
  });
}

void DeclareFileWork(CLI::App& app, Arguments& a, Command& chosen) {
  const auto carry = [&](const char* name, const char* description, Carrying what) {
    auto* command = app.add_subcommand(name, description);
    command->add_option("--to", a.to, "The folder")->type_name("DIR")->required()->check(kNotEmpty);
    command->add_flag("--overwrite", a.overwrite,
                      "Overwrite existing files instead of skipping them");
    AddPaths(*command, "FILE", a.files, "Photo files");
    Does(command, chosen, [&a, what] {
      return RunCarry(a.Global(), what, {ToText(a.to), a.overwrite, ToTexts(a.files)},
                      a.MakeConsole());
    });
  };
  carry("move", "Move photos to a folder, their rows with them", Carrying::Move);
  carry("copy", "Copy photos to a folder", Carrying::Copy);

  const auto remove = [&](const char* name, const char* description, Deleting what) {
    auto* command = app.add_subcommand(name, description);
    AddPaths(*command, "FILE", a.files, "Photo files");
    Does(command, chosen,
         [&a, what] { return RunDelete(a.Global(), what, ToTexts(a.files), a.MakeConsole()); });
  };
  remove("delete", "Delete photos from disk for good, and their rows", Deleting::FromDisk);
  remove("remove", "Take photos out of the catalogue; their files stay", Deleting::FromCatalogue);

  auto* rename = app.add_subcommand("rename", "Give photos new names; the extensions stay");
  auto* ways = rename->add_option_group("New names");
  ways->add_option("--text", a.text, "In sequence: TEXT-1, TEXT-2 and so on")->type_name("TEXT");
  ways->add_option("--search", a.searchFor, "Replace this text in the names, exact case")
      ->type_name("TEXT");
  ways->add_option("--name", a.newName, "The new name of a single file")->type_name("NAME");
  ways->require_option(1);
  rename->add_option("--start", a.start, "The first number of a sequence")->type_name("N");
  rename->add_option("--replace", a.replaceBy, "What to put for the text searched for")
      ->type_name("TEXT");
  rename->add_flag("--preview", a.preview, "Print the names and change nothing");
  AddPaths(*rename, "FILE", a.files, "Photo files");
  Does(rename, chosen, [&a] {
    const RenameMode mode = a.text        ? RenameMode::Sequential
                            : a.searchFor ? RenameMode::SearchAndReplace
                                          : RenameMode::SingleFile;
    const RenameOptions options{mode,
                                ToText(a.text).value_or(QString()),
                                ToText(a.start),
                                ToText(a.searchFor).value_or(QString()),
                                ToText(a.replaceBy),
                                ToText(a.newName).value_or(QString())};
    return RunRename(a.Global(), {options, a.preview, ToTexts(a.files)}, a.MakeConsole());
  });
}

PictureOutput Arguments::Output() const {
  return {ToText(toFolder), overwrite, catalogueOutput, ToTexts(files)};
}

ResizeFiles Arguments::Resize() const {
  ResizeOptions options;
  options.autoWidth = !width;
  options.autoHeight = !height;
  options.width = ToText(width).value_or(options.width);
  options.height = ToText(height).value_or(options.height);
  options.dpi = ToText(dpi);
  options.filter = FindResampleFilter(ToText(filter)).value_or(options.filter);
  options.sharpen = sharpen;
  return {options, Output()};
}

void AddOutput(CLI::App& command, Arguments& a) {
  command.add_option("--to", a.toFolder, "The folder")->type_name("DIR")->check(kNotEmpty);
  command.add_flag("--overwrite", a.overwrite, "Overwrite existing files instead of skipping them");
  command.add_flag("--catalog", a.catalogueOutput, "Catalog the files that are written");
  AddPaths(command, "FILE", a.files, "Photo files");
}

void DeclarePictureWork(CLI::App& app, Arguments& a, Command& chosen) {
  auto* convert = app.add_subcommand("convert", "Write photos in another format");
  convert
      ->add_option("--format", a.format,
                   "BMP, GIF, JPG, PCX, PNG, PSD, TGA, TIF, J2K or JP2; beside the source without "
                   "--to")
      ->type_name("FORMAT")
      ->required();
  convert->add_option("--option", a.settings, "A save key and its number, JPEG_QUALITY=80")
      ->type_name("KEY=VALUE")
      ->allow_extra_args(false);
  AddOutput(*convert, a);
  Does(convert, chosen, [&a] {
    return RunConvert(a.Global(), {ToText(a.format), ToTexts(a.settings), a.Output()},
                      a.MakeConsole());
  });

  auto* resize = app.add_subcommand(
      "resize", "Give photos another size, over themselves or, with --to, as files in a folder");
  auto* sides = resize->add_option_group("Size", "One side follows the other when left out");
  sides->add_option("--width", a.width, "Pixels")->type_name("N");
  sides->add_option("--height", a.height, "Pixels")->type_name("N");
  sides->require_option(1, 2);
  resize->add_option("--dpi", a.dpi, "Dots per inch, 72 without it")->type_name("N");
  resize
      ->add_option("--filter", a.filter,
                   "\"Fast linear\" (without it), Bilinear, Bicubic, Lanczos3 …")
      ->type_name("NAME")
      ->check([](const std::string& name) {
        return FindResampleFilter(ToText(name)) ? std::string() : "unknown filter: " + name;
      });
  resize->add_option("--sharpen", a.sharpen, "0 to 100")->type_name("N")->check(CLI::Range(0, 100));
  AddOutput(*resize, a);
  Does(resize, chosen, [&a] { return RunResize(a.Global(), a.Resize(), a.MakeConsole()); });

  auto* rotate = app.add_subcommand("rotate", "Turn or mirror photos in their place");
  rotate->add_option("WAY", a.turn, "cw, ccw, 180, flip-v or flip-h")
      ->required()
      ->check(CLI::IsMember({"cw", "ccw", "180", "flip-v", "flip-h"}));
  AddPaths(*rotate, "FILE", a.files, "Photo files");
  Does(rotate, chosen, [&a] {
    const QString word = ToText(a.turn);
    const auto turn = std::ranges::find_if(
        Turns(), [&](const Turn& known) { return word == QStringView(known.word); });
    return RunRotate(a.Global(), *turn, ToTexts(a.files), a.MakeConsole());
  });
}

void DeclareTemplates(CLI::App& app, Arguments& a, Command& chosen) {
  auto* watermark = app.add_subcommand(
      "watermark", "Paint a watermark into photos, which are written over themselves");
  watermark
      ->add_option("--template", a.templateName,
                   "One of those that \"zqm templates\" lists as watermark")
      ->type_name("NAME")
      ->required();
  AddPaths(*watermark, "FILE", a.files, "Photo files");
  Does(watermark, chosen, [&a] {
    return RunWatermark(a.Global(), ToText(a.templateName), ToTexts(a.files), a.MakeConsole());
  });

  auto* templates = app.add_subcommand("templates", "List the templates of watermarks and pages");
  Does(templates, chosen, [&a] { return RunTemplates(a.Global(), a.MakeConsole()); });
}

/// The captions of an editor, for its help.
template <class Fields, class Caption>
std::string Captions(const Fields& fields, Caption caption) {
  QStringList captions;
  for (const auto& field : fields)
    captions.append(QString::fromUtf16(caption(field)));
  return captions.join(QStringLiteral(", ")).toStdString();
}

void DeclareMetadata(CLI::App& app, Arguments& a, Command& chosen) {
  const auto edit = [&](const char* name, const char* description, const char* example, auto run,
                        const std::string& fields) {
    auto* command = app.add_subcommand(name, description);
    command->add_option("--set", a.settings, example)
        ->type_name("\"FIELD=TEXT\"")
        ->allow_extra_args(false);
    AddPaths(*command, "FILE", a.files, "Photo files");
    command->footer("Fields: " + fields +
                    ".\nEach file is stamped with this program as its last writer, also without "
                    "any --set.");
    Does(command, chosen, [&a, run] {
      return run(a.Global(), {ToTexts(a.settings), ToTexts(a.files)}, a.MakeConsole());
    });
  };
  edit("exif", "Write EXIF fields into TIFF and JPEG files; their rows follow",
       "A field's new value, such as \"Camera Make=Canon\" or \"Shutter Speed=1/250\"; repeat "
       "for more fields",
       RunExif, Captions(ExifEditFields(), [](const ExifField& field) { return field.caption; }));
  edit("iptc", "Write IPTC fields into TIFF, PSD and JPEG files; their rows follow",
       "A field's new value, such as \"City=Graz\"; an empty one empties the field; repeat for "
       "more fields",
       RunIptc,
       Captions(IptcDatasets(), [](const IptcField& field) { return field.field.caption; }));

  auto* exports = app.add_subcommand("export", "Write a text file with the metadata of each photo");
  exports->add_option("KIND", a.kind, "exif, iptc or gps")
      ->required()
      ->check(CLI::IsMember({"exif", "iptc", "gps"}).description(""));
  exports->add_option("--to", a.to, "The folder for the texts; those of the same name are replaced")
      ->type_name("DIR")
      ->required()
      ->check(kNotEmpty);
  AddPaths(*exports, "FILE", a.files, "Photo files; those that are away are read from their rows");
  Does(exports, chosen, [&a] {
    const MetadataKind kind = a.kind == "exif"   ? MetadataKind::Exif
                              : a.kind == "iptc" ? MetadataKind::Iptc
                                                 : MetadataKind::Gps;
    return RunExport(a.Global(), {kind, ToText(a.to), ToTexts(a.files)}, a.MakeConsole());
  });

  auto* strip = app.add_subcommand("strip", "Remove all EXIF or all IPTC data from files");
  strip->add_option("KIND", a.kind, "exif (with all GPS positions) or iptc")
      ->required()
      ->check(CLI::IsMember({"exif", "iptc"}).description(""));
  AddPaths(*strip, "FILE", a.files, "TIFF, PSD and JPEG files");
  Does(strip, chosen, [&a] {
    return RunStrip(a.Global(), a.kind == "exif" ? MetadataBlock::Exif : MetadataBlock::Iptc,
                    ToTexts(a.files), a.MakeConsole());
  });
}

void DeclarePdf(CLI::App& app, Arguments& a, Command& chosen) {
  auto* pdf = app.add_subcommand("pdf", "Write photos into PDF files, a page each");
  pdf->add_option("--to", a.to, "The folder")->type_name("DIR")->required()->check(kNotEmpty);
  pdf->add_option("--name", a.pdfName, "One file for all photos; .pdf is put behind the name")
      ->type_name("NAME");
  pdf->add_option("--compression", a.compression,
                  "0 none, 1 run length, 2 fax group 4, 3 fax group 3 (both black and white), "
                  "4 JPEG, 5 LZW")
      ->check(CLI::Range(0, 5))
      ->type_name("N")
      ->capture_default_str();
  pdf->add_option("--title", a.title, "Title of the document")->type_name("TEXT");
  pdf->add_option("--author", a.author, "Author of the document")->type_name("TEXT");
  pdf->add_option("--subject", a.subject, "Subject of the document")->type_name("TEXT");
  pdf->add_option("--keywords", a.keywords, "Keywords of the document")->type_name("TEXT");
  pdf->add_flag("--overwrite", a.overwrite, "Overwrite existing files instead of skipping them");
  AddPaths(*pdf, "FILE", a.files, "Photo files");
  Does(pdf, chosen, [&a] {
    PdfOptions options;
    options.type = a.pdfName ? PdfType::OneForAllImages : PdfType::OneForEachImage;
    options.folder = ToText(a.to);
    options.name = ToText(a.pdfName).value_or(QString());
    options.compression = static_cast<PdfCompression>(a.compression);
    options.existing = a.overwrite ? ExistingFiles::Overwrite : ExistingFiles::Skip;
    options.title = ToText(a.title), options.author = ToText(a.author);
    options.subject = ToText(a.subject), options.keywords = ToText(a.keywords);
    return RunPdf(a.Global(), {options, ToTexts(a.files)}, a.MakeConsole());
  });
}

void DeclarePrint(CLI::App& app, Arguments& a, Command& chosen) {
  auto* print = app.add_subcommand("print", "Put photos on the pages of a template, as a PDF file");
  print->add_option("--template", a.layout, "A printing template's name")
      ->type_name("NAME")
      ->required()
      ->check(kNotEmpty);
  print->add_option("--pdf", a.out, "The file to write; a PDF file that stands there is replaced")
      ->type_name("OUT")
      ->required()
      ->check(kNotEmpty);
  print->add_option("--copies", a.copies, "Number of times to print each page")
      ->type_name("N")
      ->capture_default_str();
  print
      ->add_option("--paper", a.paper,
                   "A4, Letter or a size such as 200x250mm; it is turned as the template lies")
      ->type_name("PAPER")
      ->capture_default_str();
  AddPaths(*print, "FILE", a.files, "Photo files, in the order of the boxes");
  Does(print, chosen, [&a] {
    return RunPrint(a.Global(),
                    {ToText(a.layout), ToText(a.out), ToText(a.copies), ToText(a.paper),
                     ToTexts(a.files)},
                    a.MakeConsole());
  });
}

/// Declares every command and makes `chosen` what the given one does.
void Declare(CLI::App& app, Arguments& a, Command& chosen) {
  DeclareGlobal(app, a);
  DeclareFiles(app, a, chosen);
  DeclareSearch(app, a, chosen);
  DeclareValues(app, a, chosen);
  DeclareMaintenance(app, a, chosen);
  DeclareFileWork(app, a, chosen);
  DeclarePictureWork(app, a, chosen);
  DeclareTemplates(app, a, chosen);
  DeclareMetadata(app, a, chosen);
  DeclarePdf(app, a, chosen);
  DeclarePrint(app, a, chosen);
}

/// Standard error is for the user's files; what the toolkit notes about its surroundings is
/// not.
void DropToolkitRemarks() {
  qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtFatalMsg || type == QtCriticalMsg) Console(false).ErrorLine(text);
  });
}

}  // namespace

int main(int argc, char** argv) {
  // Text is drawn without a display, whatever platform the user's windows are on.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  DropToolkitRemarks();
  QGuiApplication application(argc, argv);
  UseSystemLocale();

  CLI::App app("Zolmira QM photo manager, command line");
  app.name("zqm");
  Arguments arguments;
  Command chosen;
  Declare(app, arguments, chosen);
  try {
    app.parse(ReversedArguments(app, argc, argv));
  } catch (const CLI::ParseError& problem) {
    // Help and version are "errors" of code 0 to the parser.
    return app.exit(problem) == 0 ? kExitDone : kExitUsage;
  }
  int exitCode = kExitUnexpected;
  Guarded("zqm", "main", [&] { exitCode = chosen(); });
  return arguments.MakeConsole().Finish(exitCode);
}
