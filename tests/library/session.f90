! A product session in Fortran.  The working directory has the files of the product
! kestrel and of the plug-in heron.

program session_test
  use, intrinsic :: iso_fortran_env, only: error_unit
  use vek
  implicit none

  logical :: failed = .false., found
  character(vek_path_size) :: name, path, message
  integer :: status

  call get_command_argument(1, name)
  if (name /= '') then ! run by the command below
    call vek_start(name, ['heron', 'heron'], status)
    call vek_add_database(trim(name) // '2', 'home', status=status)
    call vek_start(name, ['heron']) ! for heron, which has no tables, ends the program
    stop
  end if
  call execute_command_line('rm -rf home; mkdir home; for p in kestrel heron; do KLV_HERON=. ../vek_session_test $p; &
    &done >log 2>&1; mv home/.vorn.cfg saved; test $(cat log saved | grep -c "heron.cfg\|did\|heron2") = 3', exitstat=status)
  if (status /= 0) call fail('a repeated start reads files again, or there is a session after a failed one')
  call expect_levels('')
  call vek_add_database('early', 'home', status=status, message=message)
  call expect(-1, 'the database early was not added: there is no session')
  call vek_start(product='sixteen_letters_', status=status, message=message)
  call expect(-1, 'the name of the product has more than 15 characters')
  call vek_start(' kestrel ', status=status, message=message)
  call expect(0, '')
  call vek_add_database('shared', 'home/s.vek', status=status, message=message)
  call expect(6, 'the database shared was not added: its name is reserved')
  call vek_start('kestrel', ['     ', 'heron'], status, message)
  call expect(0, '')
  call expect_levels('kestrel_shared|kestrel.vek private|home/private.vek heron|heron.vek &
                     &shared|heron.vek/s a>b|heron.vek/b ')
  call vek_start('other', status=status, message=message)
  call expect(-1, 'the product of this process is kestrel')
  call vek_start(plugins=['merlin', 'heron '], status=status, message=message)
  call expect(-1, 'the plug-in merlin did not start')

  call vek_database(6, name, path, status, message)
  call expect(1, 'there is no level 6')
  call vek_database(0, name, status=status)
  if (status /= 1 .or. name /= '') call fail('level 0 has a name: ' // name)
  call vek_database(2, path=path(:16), status=status)
  if (status /= 0 .or. path(:16) /= 'home/private.vek') call fail('too short: ' // path)
  call vek_database(2, name, path(:15), status, message)
  call expect(2, 'the path does not fit its variable: home/private.vek')
  if (name /= 'private' .or. path(:15) /= '') call fail('truncated: ' // path)

  call vek_add_database(' ideas ', ' $HOME/ideas.vek ', status=status, message=message)
  call expect(0, '')
  call vek_add_database('first', 'home/my first.vek', 1, status, message)
  call expect(0, '')
  call vek_add_database('IDEAS', 'home/ideas.vek', status=status, message=message)
  call expect(3, 'the database IDEAS was not added: its name is already defined')
  call vek_add_database('b', 'home/none/b.vek', status=status, message=message)
  call expect(2, 'the database b was not added: there is no directory home/none/b.vek')
  call vek_add_database('two words', 'home/c.vek', status=status, message=message)
  call expect(1, 'the database two words was not added: its name has white space')
  call vek_add_database('c', 'home/c.vek', 9, status, message)
  call expect(1, 'the database c was not added: it cannot have the level 9')
  call vek_add_database('c', ' ', status=status, message=message)
  call expect(1, 'the database c was not added')
  call expect_levels('first|home/my first.vek kestrel_shared|kestrel.vek private|home/private.vek &
                     &heron|heron.vek shared|heron.vek/s a>b|heron.vek/b ideas|home/ideas.vek ')
  call execute_command_line('grep -q "^DATABASE  *ideas " home/.vorn.cfg', exitstat=status)
  if (status /= 0) call fail('the private file lacks the database ideas')

  call execute_command_line('touch home/ideas.vek/springs.tbl/soft.spr')
  call vek_search('<ideas>/springs.tbl/soft.spr', 'spring', path, found)
  if (path /= 'home/ideas.vek/springs.tbl/soft.spr') call fail('not found: ' // path)
  if (failed) stop 3
  call vek_database(9) ! ends the program with code 1
  stop 3

contains

  subroutine expect(code, text)
    integer, intent(in) :: code
    character(*), intent(in) :: text

    if (status == code .and. message == text) return
    write (error_unit, *) status, trim(message)
    call fail('expected: ' // text)
  end subroutine expect

  ! Check the databases: "name|path " for each level.
  subroutine expect_levels(text)
    character(*), intent(in) :: text
    character(:), allocatable :: levels
    integer :: level

    levels = ''
    do level = 1, vek_database_count()
      call vek_database(level, name, path)
      levels = levels // trim(name) // '|' // trim(path) // ' '
    end do
    if (levels /= text) call fail('levels: ' // levels)
  end subroutine expect_levels

  subroutine fail(text)
    character(*), intent(in) :: text

    write (error_unit, '(a)') trim(text)
    failed = .true.
  end subroutine fail
end program session_test
