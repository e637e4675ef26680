# A small installation, and vekhost over the real libraries.

cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE ${WORK_DIR})
file(WRITE ${WORK_DIR}/vorn.cfg "DATABASE vorn_shared ${WORK_DIR}/shared.vek\n"
                                "TABLE damper dampers.tbl dpr\n")
file(WRITE ${WORK_DIR}/.vorn.cfg "DATABASE private $HOME/private.vek\n"
                                 "DEFAULT_WRITE_DB private\n")
file(WRITE ${WORK_DIR}/plug.cfg "TABLE spring springs.tbl spr\n")
file(WRITE ${WORK_DIR}/run.model "plugin_list vorn:plug\n")
file(WRITE ${WORK_DIR}/shared.vek/dampers.tbl/a.dpr "")
file(WRITE ${WORK_DIR}/private.vek/springs.tbl/b.spr "")
foreach(name KLV_PRODUCT_NAME QNS_PRODUCT_NAME KLV_VORN_SITE KLV_VORN_PRIVATE_CFG KLV_VEK_SEARCH)
  unset(ENV{${name}})
endforeach()
set(ENV{HOME} ${WORK_DIR})
set(ENV{KLV_VORN} ${WORK_DIR})
set(shared ${WORK_DIR}/shared.vek/dampers.tbl/a.dpr)
set(spring ${WORK_DIR}/private.vek/springs.tbl/b.spr)

# The exit status, and what stands on standard output, of vekhost with these
# words.
function(expect status output)
  execute_process(
    COMMAND ${VEKHOST} ${ARGN}
    WORKING_DIRECTORY ${WORK_DIR}
    RESULT_VARIABLE result
    OUTPUT_VARIABLE text
    ERROR_VARIABLE errors)
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
foreach(words "" "nonsense" "find" "copy;x" "copy;x;y;--to-db;z" "rename;x" "--nonsense;find;x" "--solver;--plugin;plug;find;x")
  expect(2 "^$" ${words})
endforeach()
