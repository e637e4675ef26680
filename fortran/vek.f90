! vek.f90 - where does a file of a given kind live?  For solvers in Fortran.
!
! Compile this source along with the solver, and link the solver against the
! library.  vek.h documents the rules that apply to all functions.

module vek
  use, intrinsic :: iso_c_binding, only: c_char, c_int, c_null_char
  implicit none
  private
  public :: f2c_db_search, f2c_vorn_vek_cfg_env_read, vek_search

  integer, parameter, public :: vek_path_size = 268 ! a path and its terminating null

  ! The library's two functions for Fortran.
  interface
    ! Read the ENVIRONMENT statements of the product and of the plug-ins that
    ! the loaded model names.  Call it before the first search.
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

contains

  ! Find the file of a name in any form.  Spaces around `name` and `file_class`
  ! are ignored.  `found` is true if the file exists and all of its path fits
  ! `path`.  Otherwise `path` is blank, because a truncated path can name another
  ! file.  `length` is the length of the file's path, or 0 if there is no file.
  ! It exceeds len(path) if `path` is too short.
  ! A name or class that has a space inside, or vek_path_size or more characters,
  ! is not found: the library would truncate it, so it is not searched for.
  ! The first call starts the library and prints what f2c_db_search does.
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

  ! Whether the library reads all of the string.
  pure logical function is_passed_whole(string)
    character(*), intent(in) :: string

    is_passed_whole = len_trim(adjustl(string)) < vek_path_size .and. &
                      index(trim(adjustl(string)), ' ') == 0
  end function is_passed_whole

  pure function null_terminated(string)
    character(*), intent(in) :: string
    character(len_trim(adjustl(string)) + 1, c_char) :: null_terminated

    null_terminated = trim(adjustl(string)) // c_null_char
  end function null_terminated
end module vek
