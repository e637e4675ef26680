! vek.f90 - where does a file of a given kind live?  For hosts in Fortran.
!
! Compile this source along with the host, and link the host against the library
! and the core library.  vek.h documents the rules that apply to all functions.
!
! Spaces around a string argument are ignored.  A result that does not fit its
! variable is not truncated, because a truncated path can name another file: the
! variable is blank.
!
! The subroutines with the optional arguments `status` and `message` treat them
! as the statements of Fortran do.  `status` becomes 0 on success.  Without it, a
! failure prints its message to the error unit and stops the program with code 1.
! `message` describes the failure, and is blank on success.  It is truncated to
! the variable.  The library's own lines, which say more, are printed through the
! core library.

module vek
  use, intrinsic :: iso_c_binding, only: c_associated, c_char, c_f_pointer, c_int, c_null_char, &
    c_ptr, c_size_t
  use, intrinsic :: iso_fortran_env, only: error_unit
  implicit none
  private
  public :: f2c_db_search, f2c_vorn_vek_cfg_env_read
  public :: vek_add_database, vek_database, vek_database_count, vek_search, vek_start

  integer, parameter, public :: vek_path_size = 268   ! a path and its terminating null
  integer, parameter, public :: vek_db_name_size = 31 ! a database's name and its null

  integer, parameter :: longest_product = 15
  integer, parameter :: fault_size = 2 * vek_path_size

  ! The start of the product, and the names started, each between null characters.
  logical :: product_is_read = .false.
  integer :: product_code = 0
  character(:), allocatable :: started_names

  ! The library's two functions for Fortran.
  interface
    ! Read the ENVIRONMENT statements of the product and of the plug-ins that
    ! the loaded model names.  Call it before the first search of a solver run.
    ! Returns 0 on success; 1 if a file did not open or its last setting failed;
    ! -1 if the shared file was not found or the private file could not be created.
    function f2c_vorn_vek_cfg_env_read() bind(C, name="F2C_VORN_VEK_CFG_ENV_READ") result(status)
      import :: c_int
      integer(c_int) :: status
    end function f2c_vorn_vek_cfg_env_read

    ! Search for a file.  `name` and `file_class` end with a null character.
    ! `result` must have vek_path_size characters: the path, of `length`
    ! characters, and a null character are written to it.  `result_size` and
    ! `name_size` are not read.
    subroutine f2c_db_search(result, result_size, length, found, name, name_size, file_class) &
      bind(C, name="F2C_DB_SEARCH")
      import :: c_char, c_int
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int), value :: result_size
      integer(c_int), intent(out) :: length
      integer(c_int), intent(out) :: found
      character(kind=c_char), intent(in) :: name(*)
      integer(c_int), value :: name_size
      character(kind=c_char), intent(in) :: file_class(*)
    end subroutine f2c_db_search
  end interface

  ! What the procedures below call.
  interface
    function c_start(name) bind(C, name="vorn_vek_cfg_env_read") result(code)
      import :: c_char, c_int
      character(kind=c_char), intent(in) :: name(*)
      integer(c_int) :: code
    end function c_start

    subroutine c_set_interface_mode() bind(C, name="vek_set_interface_mode")
    end subroutine c_set_interface_mode

    function c_product_name() bind(C, name="vek_product_name") result(name)
      import :: c_ptr
      type(c_ptr) :: name
    end function c_product_name

    function c_database_count() bind(C, name="vorn_vek_get_number_of_veks") result(count)
      import :: c_int
      integer(c_int) :: count
    end function c_database_count

    function c_database_name(level) bind(C, name="vorn_vek_level2db") result(name)
      import :: c_int, c_ptr
      integer(c_int), value :: level
      type(c_ptr) :: name
    end function c_database_name

    function c_alias_path(text) bind(C, name="vorn_vek_alias2path") result(path)
      import :: c_char, c_ptr
      character(kind=c_char), intent(inout) :: text(*)
      type(c_ptr) :: path
    end function c_alias_path

    function c_add_database(name, path, level) bind(C, name="vorn_vek_db_add") result(code)
      import :: c_char, c_int
      character(kind=c_char), intent(in) :: name(*), path(*)
      integer(c_int), value :: level
      integer(c_int) :: code
    end function c_add_database

    function c_set_variable(name, value) bind(C, name="vc_putenv") result(code)
      import :: c_char, c_int
      character(kind=c_char), intent(in) :: name(*), value(*)
      integer(c_int) :: code
    end function c_set_variable

    pure function c_length(string) bind(C, name="strlen") result(length)
      import :: c_ptr, c_size_t
      type(c_ptr), value :: string
      integer(c_size_t) :: length
    end function c_length
  end interface

contains

  ! Start a product session, and add plug-ins to it.
  !
  ! `product` is the product's short name, at most 15 characters.  It is stored in
  ! the variable KLV_PRODUCT_NAME.  Absent or blank, the product is that of the
  ! variable.  `plugins` are the names of plug-ins, added in their order up to the
  ! first that fails.  Blank ones and those already in the session are skipped.
  ! Later calls add plug-ins to the running session, which `product` cannot change.
  ! If the start of the product failed after it had read databases, later calls
  ! return its status again without reading, and no database can be added.
  !
  ! The subroutine turns interface mode on: vek_search searches the databases of
  ! this session, and a missing shared file is reported.  A solver run that
  ! starts from its model does not call it.
  !
  ! `status` is that of the start that failed:
  !   1   a database has no tables, or the numbers of tables differ;
  !   -1  a fatal condition, such as a missing shared file, or there is no default
  !       writable database, or the session cannot have that product.
  subroutine vek_start(product, plugins, status, message)
    character(*), intent(in), optional :: product
    character(*), intent(in), optional :: plugins(:)
    integer, intent(out), optional :: status
    character(*), intent(out), optional :: message

    character(fault_size) :: fault
    integer :: code, i

    code = 0
    fault = ''
    call c_set_interface_mode()
    if (present(product)) call choose_product(stripped(product), code, fault)
    if (code == 0) call start_product(code, fault)
    if (present(plugins)) then
      do i = 1, size(plugins)
        if (code == 0 .and. plugins(i) /= '') call start_plugin(stripped(plugins(i)), code, fault)
      end do
    end if
    call report('vek_start', code, fault, status, message)
  end subroutine vek_start

  ! Return the number of databases.  The level of a database is its position in
  ! the search order, from 1 to this number.
  integer function vek_database_count()
    vek_database_count = c_database_count()
  end function vek_database_count

  ! Return the name and the path of the database at a level.
  !
  ! A name has fewer than vek_db_name_size characters, and a path fewer than
  ! vek_path_size.
  !
  ! `status`:
  !   1  there is no such level;
  !   2  the name or the path does not fit its variable.
  subroutine vek_database(level, name, path, status, message)
    integer, intent(in) :: level
    character(*), intent(out), optional :: name, path
    integer, intent(out), optional :: status
    character(*), intent(out), optional :: message

    character(fault_size) :: fault
    character(:), allocatable :: found_name
    integer :: code, last

    code = 0
    fault = ''
    last = vek_database_count()
    if (present(name)) name = ' '
    if (present(path)) path = ' '
    found_name = ''
    if (level >= 1 .and. level <= last) found_name = fortran_string(c_database_name(level))
    if (found_name == '') then
      code = 1
      fault = 'there is no level ' // decimal(level)
    else
      call assign(found_name, 'name', name, code, fault)
      call assign(database_path(found_name), 'path', path, code, fault)
    end if
    call report('vek_database', code, fault, status, message)
  end subroutine vek_database

  ! Add a database of the user's to the session and to the private file, which is
  ! written at once.
  !
  ! `name` has no white space.  `path` is that of the directory, which is created
  ! if need be; "$NAME" in it stands for a variable.  A relative path is saved as
  ! it is, so later sessions look for it in their own working directories.
  ! `level` is the database's position, from 1 to one more than there are
  ! databases.  Absent, the database is the last.  A warning of the library
  ! reports a database that the private file cannot hold.
  !
  ! `status`; if it is not 0, nothing is added:
  !   -1  there is no session, or the start of the product failed;
  !   1   the name, the path or the level is not valid;
  !   2   the directory is not accessible and cannot be created;
  !   3   the name is already defined;
  !   6   the name is "shared".
  subroutine vek_add_database(name, path, level, status, message)
    character(*), intent(in) :: name, path
    integer, intent(in), optional :: level
    integer, intent(out), optional :: status
    character(*), intent(out), optional :: message

    character(*), parameter :: tab = achar(9)
    character(fault_size) :: fault
    integer :: code, last, chosen_level

    last = vek_database_count() + 1
    chosen_level = last
    if (present(level)) chosen_level = level
    fault = 'the database ' // stripped(name) // ' was not added'
    if (last == 1 .or. product_code /= 0) then ! the private file can be that of another product
      code = -1
      fault = trim(fault) // ': there is no session'
    else if (scan(stripped(name), ' ' // tab) > 0) then
      code = 1
      fault = trim(fault) // ': its name has white space'
    else if (chosen_level < 1 .or. chosen_level > last) then
      code = 1
      fault = trim(fault) // ': it cannot have the level ' // decimal(chosen_level)
    else
      code = c_add_database(null_terminated(name), null_terminated(path), chosen_level)
      if (code == 2) fault = trim(fault) // ': there is no directory ' // stripped(path)
      if (code == 3) fault = trim(fault) // ': its name is already defined'
      if (code == 6) fault = trim(fault) // ': its name is reserved'
    end if
    call report('vek_add_database', code, fault, status, message)
  end subroutine vek_add_database

  ! Find the file of a name in any form.  Spaces around `name` and `file_class`
  ! are ignored.  `found` is true if the file exists and all of its path fits
  ! `path`.  Otherwise `path` is blank, because a truncated path can name another
  ! file.  `length` is the length of the file's path, or 0 if there is no file.
  ! It exceeds len(path) if `path` is too short.
  ! A name or class that has a space inside, or vek_path_size or more characters,
  ! is not found: the library would truncate it, so it is not searched for.
  ! Without vek_start, the first call starts the library and prints what
  ! f2c_db_search does.
  subroutine vek_search(name, file_class, path, found, length)
    character(*), intent(in) :: name, file_class
    character(*), intent(out) :: path
    logical, intent(out) :: found
    integer, intent(out), optional :: length

    character(vek_path_size, c_char) :: result
    integer(c_int) :: result_length, result_found

    path = ' '
    found = .false.
    result_length = 0
    result_found = 0
    if (is_passed_whole(name) .and. is_passed_whole(file_class)) then
      call f2c_db_search(result, vek_path_size, result_length, result_found, &
                         null_terminated(name), len_trim(name), null_terminated(file_class))
    end if
    if (result_found == 0) result_length = 0
    found = result_found /= 0 .and. result_length <= min(len(path), vek_path_size - 1)
    if (found) path = result(:result_length)
    if (present(length)) length = result_length
  end subroutine vek_search

  ! Store the name of the product where the library looks for it at its first start.
  subroutine choose_product(product, code, fault)
    character(*), intent(in) :: product
    integer, intent(inout) :: code
    character(*), intent(inout) :: fault
    character(:), allocatable :: fixed

    if (product == '') return
    fixed = fortran_string(c_product_name())
    if (len(product) > longest_product) then
      fault = 'the name of the product has more than ' // decimal(longest_product) // ' characters'
    else if (fixed /= '' .and. fixed /= product) then
      fault = 'the product of this process is ' // fixed
    else if (c_set_variable('KLV_PRODUCT_NAME' // c_null_char, null_terminated(product)) /= 0) then
      fault = 'KLV_PRODUCT_NAME cannot be set'
    end if
    if (fault /= '') code = -1
  end subroutine choose_product

  ! Start the product, unless its files have been read: a second reading would report
  ! each of their databases as already defined.
  subroutine start_product(code, fault)
    integer, intent(out) :: code
    character(*), intent(inout) :: fault

    if (.not. product_is_read) then
      product_code = c_start(c_null_char)
      product_is_read = vek_database_count() > 0
      started_names = c_null_char // fortran_string(c_product_name()) // c_null_char
    end if
    code = product_code
    if (code /= 0) fault = 'the product ' // fortran_string(c_product_name()) // ' did not start'
  end subroutine start_product

  ! Start a plug-in, unless it is in the session.
  subroutine start_plugin(name, code, fault)
    character(*), intent(in) :: name
    integer, intent(out) :: code
    character(*), intent(inout) :: fault

    code = 0
    if (index(started_names, c_null_char // name // c_null_char) > 0) return
    code = c_start(null_terminated(name))
    if (code == 0) started_names = started_names // name // c_null_char
    if (code /= 0) fault = 'the plug-in ' // name // ' did not start'
  end subroutine start_plugin

  ! Return the path of a database.  Of the two forms of an alias, one ends the name
  ! at ">" and the other at "/".  In both, "shared" in lower case stands for another
  ! database than the one of that name.
  function database_path(name) result(path)
    character(*), intent(in) :: name
    character(:), allocatable :: path
    character(len(name) + 9, c_char) :: alias

    alias = '<' // name // '>' // c_null_char
    if (index(name, '>') > 0) alias = 'klvds://' // name // c_null_char
    if (name == 'shared') alias = '<SHARED>' // c_null_char
    path = fortran_string(c_alias_path(alias))
  end function database_path

  ! Assign a result, if the caller wants it.
  subroutine assign(value, what, variable, code, fault)
    character(*), intent(in) :: value, what
    character(*), intent(inout), optional :: variable
    integer, intent(inout) :: code
    character(*), intent(inout) :: fault

    if (.not. present(variable)) return
    if (len(value) <= len(variable)) then
      variable = value
    else
      code = 2
      fault = 'the ' // what // ' does not fit its variable: ' // value
    end if
  end subroutine assign

  subroutine report(caller, code, fault, status, message)
    character(*), intent(in) :: caller, fault
    integer, intent(in) :: code
    integer, intent(out), optional :: status
    character(*), intent(out), optional :: message

    if (present(status)) status = code
    if (present(message)) message = ' '
    if (code == 0) return
    if (present(message)) message = fault
    if (present(status)) return
    write (error_unit, '(3a)') caller, ': ', trim(fault)
    stop 1
  end subroutine report

  ! Whether the library reads all of the string.
  pure logical function is_passed_whole(string)
    character(*), intent(in) :: string

    is_passed_whole = len_trim(adjustl(string)) < vek_path_size .and. &
                      index(trim(adjustl(string)), ' ') == 0
  end function is_passed_whole

  pure function stripped(string)
    character(*), intent(in) :: string
    character(len_trim(adjustl(string))) :: stripped

    stripped = adjustl(string)
  end function stripped

  pure function null_terminated(string)
    character(*), intent(in) :: string
    character(len_trim(adjustl(string)) + 1, c_char) :: null_terminated

    null_terminated = trim(adjustl(string)) // c_null_char
  end function null_terminated

  ! Copy a string of the library's.
  function fortran_string(string) result(copy)
    type(c_ptr), intent(in) :: string
    character(:), allocatable :: copy
    character(kind=c_char), pointer :: characters(:)
    integer :: i

    copy = ''
    if (.not. c_associated(string)) return
    call c_f_pointer(string, characters, [c_length(string)])
    copy = repeat(' ', size(characters))
    do i = 1, size(characters)
      copy(i:i) = characters(i)
    end do
  end function fortran_string

  function decimal(number)
    integer, intent(in) :: number
    character(:), allocatable :: decimal
    character(12) :: digits

    write (digits, '(i0)') number
    decimal = trim(digits)
  end function decimal
end module vek
