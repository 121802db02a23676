# cmake -DTEMPLATE=FILE -DPROGRAM=PATH -DVERSION=V -DOUTPUT=FILE -P man_page.cmake: the manual page of a program, with what its
# --help says in place of @HELP@, as it stands.
execute_process(COMMAND ${PROGRAM} --help OUTPUT_VARIABLE HELP COMMAND_ERROR_IS_FATAL ANY)
string(REPLACE "\\" "\\e" HELP "${HELP}")
string(REPLACE "-" "\\-" HELP "${HELP}")
string(REPLACE "^" "\\(ha" HELP "${HELP}")
string(REPLACE "~" "\\(ti" HELP "${HELP}")
string(REPLACE "`" "\\(ga" HELP "${HELP}")
string(REPLACE "'" "\\(aq" HELP "${HELP}")
string(REPLACE "\n." "\n\\&." HELP "${HELP}")
string(STRIP "${HELP}" HELP)
set(HELP ".nf\n${HELP}\n.fi\n.PP")
configure_file(${TEMPLATE} ${OUTPUT} @ONLY)
