! vek.f90 - where does a file of a given kind live?  For solvers in Fortran.
!
! A source to be compiled along with the solver, which is linked against the
! library.  vek.h has the rules that hold for all of it.

module vek
  use, intrinsic :: iso_c_binding, only: c_char, c_int, c_null_char
  implicit none
  private
  public :: f2c_db_search, f2c_vorn_vek_cfg_env_read, vek_search

  integer, parameter, public :: vek_path_size = 268 ! a path text and its terminator

  ! The library's own two operations for Fortran.
  interface
    ! Take the ENVIRONMENT statements of the product and of the plug-ins that
    ! the loaded model names.  To be called before the first search.
    ! Result: 0 taken; 1 a file did not open or its last setting failed; -1 the
    ! configuration files were not found.
    function f2c_vorn_vek_cfg_env_read() bind(C, name="F2C_VORN_VEK_CFG_ENV_READ") result(status)
      import :: c_int
      integer(c_int) :: status
    end function f2c_vorn_vek_cfg_env_read

    ! `name` and `file_class` end with a null character.  `result` must have
    ! vek_path_size characters; it ends with a null character behind `length`
    ! others.  The two sizes are not read.
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

  ! Find the file of a name in any form; blanks around `name` and `file_class`
  ! do not count.  `found` tells that the file is there and that `path` holds
  ! the whole of its path; otherwise `path` is blank, because a cut path can
  ! name another file.  `length` tells the characters of the path: more than
  ! `path` has if that is what was wrong, and 0 if the file is not there.
  ! A name or class that the library would cut, as it has a blank inside or
  ! vek_path_size characters, is not asked for and not found.
  ! The first call starts the library and prints what f2c_db_search does.
  subroutine vek_search(name, file_class, path, found, length)
    character(*), intent(in) :: name, file_class
    character(*), intent(out) :: path
    logical, intent(out) :: found
    integer, intent(out), optional :: length

    character(vek_path_size, c_char) :: answer
    integer(c_int) :: answer_length, answer_found

    path = ' '
    found = .false.
    answer_length = 0
    answer_found = 0
    if (is_whole(name) .and. is_whole(file_class)) then
      call f2c_db_search(answer, vek_path_size, answer_length, answer_found, terminated(name), &
                         len_trim(name), terminated(file_class))
    end if
    if (answer_found == 0) answer_length = 0
    found = answer_found /= 0 .and. answer_length <= min(len(path), vek_path_size - 1)
    if (found) path = answer(:answer_length)
    if (present(length)) length = answer_length
  end subroutine vek_search

  ! Whether the library takes all of the text.
  pure logical function is_whole(text)
    character(*), intent(in) :: text

    is_whole = len_trim(adjustl(text)) < vek_path_size .and. &
               index(trim(adjustl(text)), ' ') == 0
  end function is_whole

  pure function terminated(text)
    character(*), intent(in) :: text
    character(len_trim(adjustl(text)) + 1, c_char) :: terminated

    terminated = trim(adjustl(text)) // c_null_char
  end function terminated
end module vek
