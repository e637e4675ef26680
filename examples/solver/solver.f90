! solver.f90 - a small solver.  It loads a model and prints the path and title of
! each of its files.  The lines "file <class> <name>" of the model name them.

program solver
  use, intrinsic :: iso_c_binding, only: c_char, c_int, c_null_char
  use, intrinsic :: iso_fortran_env, only: error_unit, output_unit
  use vek, only: f2c_vorn_vek_cfg_env_read, vek_path_size, vek_search
  implicit none

  ! Control of the stub core library; see hsk_control.h.
  interface
    subroutine hsk_output_to_error(to_error) bind(C, name="hsk_output_to_error")
      import :: c_int
      integer(c_int), value :: to_error
    end subroutine hsk_output_to_error

    function hsk_load_model(path) bind(C, name="hsk_load_model") result(status)
      import :: c_char, c_int
      character(kind=c_char), intent(in) :: path(*)
      integer(c_int) :: status
    end function hsk_load_model
  end interface

  integer, parameter :: line_size = 1024
  character(line_size) :: model, line, word, file_class, name
  integer :: unit, status

  call get_command_argument(1, model, status=status)
  if (status /= 0) call fail('which model?  Usage: solver MODEL')
  call hsk_output_to_error(1)
  if (hsk_load_model(trim(model) // c_null_char) /= 0) call fail('no model ' // trim(model))
  if (f2c_vorn_vek_cfg_env_read() /= 0) call fail('the configuration is not in order')

  open (newunit=unit, file=model, status='old', action='read', iostat=status)
  if (status /= 0) call fail('no model ' // trim(model))
  do
    read (unit, '(a)', iostat=status) line
    if (status /= 0) exit
    call read_word(line, word)
    if (word /= 'file') cycle
    call read_word(line, file_class)
    call read_word(line, name)
    call print_file(file_class, name)
  end do
  close (unit)

contains

  ! Print the path of a file and its title, which is on its first line.
  subroutine print_file(file_class, name)
    character(*), intent(in) :: file_class, name
    character(vek_path_size) :: path
    character(line_size) :: title, keyword
    integer :: file_unit, file_status
    logical :: found

    call vek_search(name, file_class, path, found)
    if (.not. found) call fail('no file ' // trim(name))
    open (newunit=file_unit, file=path, status='old', action='read', iostat=file_status)
    if (file_status == 0) read (file_unit, '(a)', iostat=file_status) title
    if (file_status /= 0) call fail('nothing to read in ' // trim(path))
    close (file_unit)
    call read_word(title, keyword)
    write (output_unit, '(a8, 3a)') file_class, trim(path), ': ', trim(title)
  end subroutine print_file

  ! Move the first word of a string to `word`.
  subroutine read_word(string, word)
    character(*), intent(inout) :: string
    character(*), intent(out) :: word
    integer :: length

    string = adjustl(string)
    length = scan(string, ' ') - 1
    if (length < 0) length = len(string)
    word = string(:length)
    string = adjustl(string(length + 1:))
  end subroutine read_word

  subroutine fail(message)
    character(*), intent(in) :: message

    write (error_unit, '(2a)') 'solver: ', message
    stop 1
  end subroutine fail
end program solver
