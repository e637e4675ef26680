! The search for Fortran.  Without a model and a product, each name is a plain
! path.  The working directory has the file "a.dpr".

program search_test
  use, intrinsic :: iso_fortran_env, only: error_unit
  use vek, only: vek_path_size, vek_search
  implicit none

  logical :: failed = .false.
  character(vek_path_size) :: longest

  longest = repeat('./', (vek_path_size - 6) / 2) // 'a.dpr'
  call expect('a.dpr', 'damper', 20, 'a.dpr', 5)
  call expect('  a.dpr  ', ' damper ', 20, 'a.dpr', 5)
  call expect('b.dpr', 'damper', 20, '', 0)
  call expect('a.dpr x', 'damper', 20, '', 0)
  call expect('a.dpr', 'dam per', 20, '', 0)
  call expect('', '', 20, '', 0)
  call expect('a.dpr', 'damper', 5, 'a.dpr', 5)
  call expect('a.dpr', 'damper', 4, '', 5)
  call expect(longest, 'damper', vek_path_size, longest, vek_path_size - 1)
  call expect(longest, 'damper', vek_path_size - 2, '', vek_path_size - 1)
  ! The library would truncate this one to a path of the file.
  call expect(repeat('./', (vek_path_size - 8) / 2) // '/a.dprxx', 'damper', vek_path_size, '', 0)
  if (failed) stop 1

contains

  ! Check the result in a variable of `size` characters.  An empty path means not found.
  subroutine expect(name, file_class, size, path, length)
    character(*), intent(in) :: name, file_class, path
    integer, intent(in) :: size, length
    character(size) :: result
    integer :: result_length
    logical :: found

    result = repeat('#', size)
    call vek_search(name, file_class, result, found, result_length)
    if (result == path .and. (found .eqv. path /= '') .and. result_length == length) return
    write (error_unit, '(5a, l2, i4)') '"', name, '": returned "', result, '"', found, result_length
    failed = .true.
  end subroutine expect
end program search_test
