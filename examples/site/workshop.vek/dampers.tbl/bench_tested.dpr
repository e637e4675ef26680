title              front damper, as measured on the bench
rebound_rate       2090  N*s/m
bump_rate          1010  N*s/m
stroke              164  mm
