! add.f90 - add a database, which is saved in the private file, and list all databases.
! Usage: add NAME PATH, with the variables of the sample installation (kestrel, heron).
! A relative PATH is saved as it is: later sessions look for it in their own working directories.

program add
  use, intrinsic :: iso_c_binding, only: c_int
  use vek
  implicit none

  interface ! control of the stub core library; see hsk_control.h
    subroutine hsk_output_to_error(to_error) bind(C, name='hsk_output_to_error')
      import :: c_int
      integer(c_int), value :: to_error
    end subroutine hsk_output_to_error
  end interface

  character(vek_path_size) :: name, path
  integer :: level

  call get_command_argument(1, name)
  call get_command_argument(2, path)
  call hsk_output_to_error(1_c_int) ! the library's lines do not mix with the answer
  call vek_start(product='kestrel', plugins=['heron'])
  call vek_add_database(name, path)
  do level = 1, vek_database_count()
    call vek_database(level, name, path)
    print '(i0, 2(2x, a))', level, trim(name), trim(path)
  end do
end program add
