# Sessions of vekhost under valgrind.  Only records, and what holds them, may be
# left at the end, within reach.

cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE ${WORK_DIR})
file(WRITE ${WORK_DIR}/vorn.cfg
     "DATABASE vorn_shared ${WORK_DIR}/shared.vek\nTABLE damper dampers.tbl dpr\nTABLE x\n"
     "PROPFILE damper <shared>/dampers.tbl/a.dpr\nTESTRIG damper rig\n")
file(WRITE ${WORK_DIR}/.vorn.cfg "ENVIRONMENT A b\nDATABASE private ${WORK_DIR}/private.vek\n"
                                 "DEFAULT_WRITE_DB private\n")
file(WRITE ${WORK_DIR}/plug.cfg "TABLE spring springs.tbl spr\n")
file(WRITE ${WORK_DIR}/run.model "plugin_list vorn:plug\n")
file(WRITE ${WORK_DIR}/shared.vek/dampers.tbl/a.dpr "")
set(ENV{KLV_VORN_PRIVATE_CFG} ${WORK_DIR}/.vorn.cfg)
set(ENV{KLV_VORN} ${WORK_DIR})

function(expect status)
  execute_process(
    COMMAND ${VALGRIND} --quiet --leak-check=full --show-leak-kinds=definite,indirect,possible
            --errors-for-leak-kinds=definite,indirect,possible --error-exitcode=9 ${VEKHOST} ${ARGN}
    WORKING_DIRECTORY ${WORK_DIR}
    RESULT_VARIABLE result
    OUTPUT_VARIABLE text
    ERROR_VARIABLE text)
  if(NOT result STREQUAL status)
    message(SEND_ERROR "vekhost ${ARGN}: exit status ${result}, printed '${text}'")
  endif()
endfunction()

expect(0 --plugin plug add mine ${WORK_DIR}/mine.vek)
expect(0 remove mine)
expect(0 save)
expect(0 --solver --model run.model find <shared>/dampers.tbl/a.dpr)
