#include "app/ctl_arguments.h"

namespace harvelop
{

std::string CtlUsage()
{
    return R"(Usage: harvelctl [--dir DIR] COMMAND

  find [--port N | --all] [--yes] [--password TEXT]
                   search the com ports for loggers and store what is found;
                   --yes replaces stored loggers without asking,
                   --password answers when a logger wants a password
  list [--json]    the stored loggers
  show N [--json]  all fields of logger N
  set N FIELD=VALUE...
                   change fields of logger N by the rules of its panel, in this
                   order, all or none; FIELD as "show" names it: ScheduleOn.A
  lists N [--schedule KEY] [--json]
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
  test-smtp, test-ftp
                   log in to the mail server, the FTP server of options.ini

  --dir DIR        the application directory (the current one)
  --help, --version

Results go to standard output, progress to standard error.
Exit codes: 0 done, 1 nothing found, refused or failed, 2 wrong usage.
)";
}

} // namespace harvelop
