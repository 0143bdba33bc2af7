# cmake -DREADME=<README.md> -DPROGRAM=<first.cpp> -P ReadmeHasTheProgram.cmake
#
# Fails unless the README shows the program as it is: a fenced ```cpp block whose lines are
# the file's lines.
file(READ "${README}" readme)
file(READ "${PROGRAM}" program)
string(FIND "${readme}" "```cpp\n${program}```\n" at)
if(at EQUAL -1)
    message(FATAL_ERROR "${README} does not show ${PROGRAM} as it is, in a ```cpp block")
endif()
message(STATUS "${README} shows ${PROGRAM} as it is")
