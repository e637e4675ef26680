# Sources of the libraries cannot use the C library's unbounded functions: the compiler
# rejects their names.

cmake_minimum_required(VERSION 3.25)

set(banned strcpy stpcpy strcat sprintf vsprintf gets scanf fscanf sscanf vscanf vfscanf vsscanf
           strncpy stpncpy strncat strtok atoi atol atoll atof alloca tmpnam tempnam mktemp)
set(allowed snprintf memcpy strtol)

file(MAKE_DIRECTORY ${WORK_DIR})
foreach(name IN LISTS banned allowed)
  file(WRITE ${WORK_DIR}/${name}.cpp "struct user {\n    int ${name};\n};\n")
  foreach(library VEK HSK)
    execute_process(
      COMMAND ${CXX} ${${library}_OPTIONS} -I${SOURCES} -fsyntax-only ${WORK_DIR}/${name}.cpp
      RESULT_VARIABLE result
      ERROR_VARIABLE errors)
    if(name IN_LIST allowed AND NOT result EQUAL 0)
      message(SEND_ERROR "${library}: ${name} cannot be used: ${errors}")
    elseif(name IN_LIST banned AND (result EQUAL 0 OR NOT errors MATCHES "poisoned"))
      message(SEND_ERROR "${library}: ${name} can be used: ${errors}")
    endif()
  endforeach()
endforeach()
