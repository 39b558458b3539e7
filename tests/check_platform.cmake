# A host links its own platform libraries, so zan must hold no copy of what they provide: every platform operation that it
# knows is an undefined symbol, and one that the stand-in exports.
# cmake -DLIBRARY=... -DLIST=... -DNM=... -P check_platform.cmake
set(platform "^(_Z[A-Z]*[0-9]+)?(Belp?_|OSKA_|VUN_)")
function(names result)
  execute_process(COMMAND "${NM}" --format=posix ${ARGN} "${LIBRARY}" OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX REPLACE "[@ ][^\n]*" "" output "${output}")
  string(REGEX MATCHALL "[^\n]+" found "${output}")
  list(FILTER found INCLUDE REGEX "${platform}")
  set(${result} "${found}" PARENT_SCOPE)
endfunction()

names(held --defined-only)
names(exported -D --defined-only)
names(wanted -D --undefined-only)
file(STRINGS "${LIST}" listed REGEX "^[^#]")
set(unknown ${wanted})
list(REMOVE_ITEM unknown ${listed})
list(LENGTH wanted count)
if(held OR exported OR unknown OR count LESS 10)
  message(FATAL_ERROR "held: ${held}\nexported: ${exported}\nnot the platform's: ${unknown}\nwanted: ${wanted}")
endif()
message(STATUS "${count} platform operations, all of them undefined")
