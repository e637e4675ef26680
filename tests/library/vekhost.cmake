# vekhost with the shared libraries, on a small installation.

cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE ${WORK_DIR})
file(WRITE ${WORK_DIR}/vorn.cfg "DATABASE vorn_shared ${WORK_DIR}/shared.vek\n"
                                "TABLE damper dampers.tbl dpr\n")
file(WRITE ${WORK_DIR}/.vorn.cfg "DATABASE private ${WORK_DIR}/private.vek\n"
                                 "DEFAULT_WRITE_DB private\n")
file(WRITE ${WORK_DIR}/plug.cfg "TABLE spring springs.tbl spr\n")
file(WRITE ${WORK_DIR}/run.model "plugin_list vorn:plug\n")
file(WRITE ${WORK_DIR}/shared.vek/dampers.tbl/a.dpr "")
file(WRITE ${WORK_DIR}/private.vek/springs.tbl/b.spr "")
foreach(name KLV_PRODUCT_NAME QNS_PRODUCT_NAME KLV_VORN_SITE KLV_VEK_SEARCH)
  unset(ENV{${name}})
endforeach()
set(ENV{KLV_VORN_PRIVATE_CFG} ${WORK_DIR}/.vorn.cfg)
set(ENV{KLV_VORN} ${WORK_DIR})
set(shared ${WORK_DIR}/shared.vek/dampers.tbl/a.dpr)
set(spring ${WORK_DIR}/private.vek/springs.tbl/b.spr)

# Check the exit status and the standard output of vekhost with these arguments.
function(expect status output)
  execute_process(
    COMMAND ${VEKHOST} ${ARGN}
    WORKING_DIRECTORY ${WORK_DIR}
    RESULT_VARIABLE result
    OUTPUT_VARIABLE text
    ERROR_VARIABLE errors)
  string(REPLACE "\r" "" text "${text}")
  if(NOT result STREQUAL status OR NOT text MATCHES "${output}")
    message(SEND_ERROR "vekhost ${ARGN}: exit status ${result}, printed '${text}', '${errors}'")
  endif()
endfunction()

expect(0 "^${shared}\n$" find "<shared>/dampers.tbl/a.dpr")
expect(1 "^${shared}\n<private>/x/none: not found\n$" find --class damper
       [[klvds:\\shared\dampers.tbl\a.dpr]] "<private>/x/none")
expect(0 "^${spring}\n$" --plugin plug find "<private>/springs.tbl/b.spr")
expect(0 "^${spring}\n${shared}\n$" --solver --model run.model find "<private>/springs.tbl/b.spr"
       "file://${shared}")
expect(0 "vorn_shared.*private" databases)
expect(0 "Table +damper +dampers.tbl +dpr" tables)
expect(0 "" session)
expect(0 "^klvds://vorn_shared/dampers.tbl/a.dpr\nfile://x\n$" alias ${shared} x)
expect(0 "" copy --to-db private ${shared})
expect(0 "^${WORK_DIR}/private.vek/dampers.tbl/a.dpr\n$" find "<private>/dampers.tbl/a.dpr")
expect(0 "" copy ${shared} b.dpr)
expect(0 "" append ${shared} b.dpr)
expect(0 "" rename b.dpr c.dpr)
expect(0 "" backup c.dpr)
expect(0 "" delete c.dpq)
expect(1 "" delete c.dpq)
expect(0 "damper +none +none" defaults damper)
set(ENV{VEHICLE_SOLVER_DEBUG} 7)
expect(0 "OS-environment detected:  VEHICLE_SOLVER_DEBUG=7" env)
expect(0 "find" --help)

# --why and --all.  The levels are searched only if KLV_VEK_SEARCH asks for it.
set(none "No such file or directory")
expect(1 "1 +private +dampers.tbl +${none} +${WORK_DIR}/private.vek/dampers.tbl/z.dpr\n.*not \"yes\".*not found\n$"
       find --why --class damper "<private>/dampers.tbl/z.dpr")
expect(0 "1 +vorn_shared +dampers.tbl +found +${shared}\n +${shared}\n$" find --why
       "<shared>/dampers.tbl/a.dpr")
set(ENV{KLV_VEK_SEARCH} yes)
file(WRITE ${WORK_DIR}/only.dpr "")
expect(0 "1 +- +- +${none} +a.dpr\n +2 +vorn_shared +dampers.tbl +found +${shared}\n +${shared}\n$" find --why
       --class damper a.dpr)
expect(0 "^a.dpr\n +1 +vorn_shared +wins +${shared}\n +2 +private +hidden +[^ ]+/private.vek/dampers.tbl/a.dpr\n$"
       find --all --class damper a.dpr)
expect(0 "1 +vorn_shared +hidden +[^\n]+\n +2 +private +wins " find --all --class damper
       "<private>/dampers.tbl/a.dpr")
expect(0 "- +- +wins +only.dpr\n$" find --all --class damper only.dpr)
expect(1 "not found\n$" find --all --class damper none.dpr)
unset(ENV{KLV_VEK_SEARCH})
expect(1 "1 +vorn_shared +not searched .*not found\n$" find --all --class damper a.dpr)

# Edits, each in its own session.
expect(0 "^0 errors and 0 warnings in ${WORK_DIR}/vorn.cfg, ${WORK_DIR}/.vorn.cfg, ./plug.cfg\n$"
       --plugin plug check)
expect(0 "^$" add mine mine.vek)
expect(0 "^$" add --level 1 other other.vek)
expect(1 "^$" add other other.vek)
expect(0 "1 +mine .*2 +vorn_shared .*3 +other " move mine 1)
expect(1 "^$" move mine 9)
expect(0 "^$" default mine)
expect(0 "^mine\n$" default)
expect(1 "^$" remove mine)
expect(0 "^$" remove other)
expect(0 "^$" save)
expect(0 "^$" report databases db.txt)
file(READ ${WORK_DIR}/db.txt report)
if(NOT report MATCHES "\\*\\*mine")
  message(SEND_ERROR "The report of databases is '${report}'")
endif()
expect(0 "^$" report tables tbl.txt)
expect(0 "^$" new-database new.vek)
expect(1 "^$" new-database new.vek)
expect(0 "^\n\nQNS C .*QNS Release  ver: [0-9.]+-CL[0-9]+\n$" version)
file(APPEND ${WORK_DIR}/.vorn.cfg "DATABASE\n")
expect(1 "^2 errors and 2 warnings in " check)
foreach(arguments "" "nonsense" "find" "copy;x" "copy;x;y;--to-db;z" "rename;x" "--nonsense;find;x" "--solver;--plugin;plug;find;x" "--solver;check"
              "find;--all;x" "report;x;y" "move;x" "add;x")
  expect(2 "^$" ${arguments})
endforeach()

# At exit only memory that is still reachable may be allocated: the records.
if(VALGRIND)
  list(PREPEND VEKHOST ${VALGRIND} --quiet --leak-check=full --error-exitcode=9
       --show-leak-kinds=definite,indirect,possible --errors-for-leak-kinds=definite,indirect,possible)
  expect(0 "^$" --plugin plug add last last.vek)
  expect(0 "^$" remove last)
  expect(0 "^$" save)
  expect(0 "^${shared}\n$" --solver --model run.model find "<shared>/dampers.tbl/a.dpr")
endif()
