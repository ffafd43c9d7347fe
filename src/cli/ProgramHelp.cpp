#include "cli/ProgramHelp.h"

namespace cli {

namespace {

const char* const listing = R"(Usage: tessary COMMAND [OPTIONS]
       tessary [--] FILE…              opens documents in the editor

Look at files (.qtz compositions and .composition documents) and play them:
  info FILE                what a file holds: size, inputs, outputs, stop frames; components
  check FILE…              what in it cannot work as meant
  render FILE -o OUT       frames: pictures, a movie, or raw RGBA to standard output
  patches                  the patches that this program knows, as Markdown

Make and edit documents:
  new OUT.composition      an empty document
  add DOC COMPONENT        a component: a standard one, a .qtz file or a picture
  set DOC TARGET KEY=VALUE values of a component, or of the document itself
  key DOC TARGET KEY TIME=VALUE  key frames
  stop DOC TIME [TEXT]     a stop frame, which waits for a trigger
  guide DOC x|y POSITION   a guide line
  remove DOC TARGET…       components
  order DOC TARGET front   stacking
  embed, relative, upgrade DOC  files that it uses, and its standard components
  values DOC               named sets of values, for render --values and the thumbnail
  export DOC OUT.qtz       one playout composition
  thumbnail DOC OUT.png    the picture that stands for it
  batch [FILE | -]         these commands from a script

About the program:
  completion SHELL         what bash, zsh or fish complete
  manual                   the manual page

Options:
  --help               this text; with a command, all about that command (also: help COMMAND)
  --version            the program's version

A lower third, made, animated and played:

)";

const char* const exampleText = R"(  tessary new name.composition --mode "HD 1080p50" --duration 2
  tessary add name.composition Rectangle title=Bar x=120 y=80 width=1096 height=152 Color=#1A58C4
  tessary add name.composition Text title=Name x=156 y=116 width=1024 height=80 fields=Text \
    Text="Harbour Master" Font_Name="Inter Display Bold 66"
  tessary key name.composition Bar width 0=0 0.4=1096 1.6=1096 2=0
  tessary key name.composition Name opacity 0.4=0 0.64=1 1.4=1 1.6=0
  tessary stop name.composition 1 Out
  tessary set name.composition . poster=1
  tessary export name.composition name.qtz
  tessary render name.qtz -o name.png --from 1 --set "Name_Text=Chief Engineer")";

const char* const statuses =
    R"(0 done, 1 done with findings, 2 wrong usage, 3 input unreadable, 4 output failed or
document held by others, 5 files of the program missing, 70 internal error, 130 stopped by Ctrl+C
or SIGTERM.)";

}  // namespace

QString ProgramHelp::overview() {
  return QString::fromUtf8(listing) + example() + QStringLiteral("\n\nExit status: ") +
         exitStatuses();
}

QString ProgramHelp::example() {
  return QString::fromUtf8(exampleText);
}

QString ProgramHelp::exitStatuses() {
  return QString::fromUtf8(statuses);
}

}  // namespace cli
