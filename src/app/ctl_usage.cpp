#include "app/ctl_arguments.h"

namespace harvelop
{

std::string CtlUsage()
{
    return R"(Usage: harvelctl [--dir DIR] COMMAND [--json]

  find [--port N | --all] [--yes] [--password TEXT]
                   search the com ports for loggers and store what is found;
                   --yes replaces stored loggers without asking,
                   --password answers when a logger wants a password
  list             the stored loggers
  show N           all fields of logger N
  set N FIELD=VALUE...
                   change fields of logger N by the rules of its panel, in this
                   order, all or none; FIELD as "show" names it: ScheduleOn.A
  lists N [--schedule KEY]
                   to which addresses the data of logger N go, by schedule;
                   KEY is a schedule's letter, or 0 for the list of all
  lists N [--schedule KEY] [--description TEXT] [--clear]
          [--remove ADDRESS] [--add ADDRESS]
                   change one list, that of all schedules without --schedule;
                   each change can be given several times; they are made in
                   the order given, all or none; --clear removes all addresses
  lists N --delete-all [--yes]
                   remove all addresses and descriptions of logger N;
                   --yes does so without asking
  ports            the com ports of this machine
  add --model M [--series S] [--serial S] [--password P] [--timeout S]
      (--com N [--baud B] [--parity P] [--data-bits D] [--stop-bits S]
       [--flow F] | --modem N --phone P [--baud B] [--init S] |
       --tcp HOST:PORT)
                   store a logger as the dialog does and print its number; a
                   modem's speed counts only once the logger is changed there
  delete N [--yes] delete logger N and its lists; those behind it move up
  test N           look for a logger where logger N is stored; stores nothing
  connect N        reach logger N, see whether it is the one, and release it
  send N TEXT      send a line to logger N and print its answer; a TEXT that
                   begins with "-" comes behind "--"
  terminal N       send the lines of standard input, print what comes in
  load N FILE [--card | --flash] [--yes]
                   send a program to the internal memory of logger N, to its
                   memory card or to its flash memory
  jobs N           the jobs of logger N, the running one with a star
  clear N (--job NAME | --all-jobs | --programs | --card | --flash) [--yes]
                   delete from logger N: a job or all jobs (models KR4...), the
                   programs in memory (other models), those on the card or in
                   flash memory
                   load and clear ask what the windows ask, such as before data
                   are lost; --yes answers every question with yes
  unload [N]       start harvel for all loggers, or for logger N
  shortcut N [--name TEXT] [--command TEXT [--terminal]]
                   put an icon on the desktop that unloads logger N, or sends
                   it a command and, with --terminal, stays in the terminal
  options [NAME=VALUE...]
                   show the options, or change them by the rules of their
                   panel, in this order, all or none
  test-smtp, test-ftp
                   log in to the mail server, the FTP server of options.ini
  check            name all that is odd in the data files, a line each as
                   FILE:LINE: TEXT; changes nothing
  language-template
                   print a language file with all texts in English
  language-check FILE
                   name what is missing, doubled or malformed in it
  completion SHELL print what bash, zsh or fish needs to complete commands

  --dir DIR        the application directory (the current one)
  --trace FILE     write every byte of every link to FILE, passwords masked
  --json           print the result as JSON. What shows something prints just
                   that: list, lists, ports and the checks an array, show and
                   options an object. All others print an object with "done",
                   true or false, "messages", what was told, each with "kind"
                   (information, warning, error or question), "text" and, of
                   a question, "answer"; and what came of it: "loggers" of
                   find, "number" of add, "found" of test and connect,
                   "changed" of set and options, "lists" of lists, "answer" of
                   send, "jobs" of jobs. terminal prints {"received": LINE}
                   for each line and then that object. What can't be shown
                   is such an object, too. Wrong usage prints no JSON.
  --help, --version

Results go to standard output, progress to standard error.
Exit codes: 0 done, 1 nothing found, refused, failed or odd, 2 wrong usage.
)";
}

} // namespace harvelop
