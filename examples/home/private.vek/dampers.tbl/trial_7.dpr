title              front damper, my seventh trial
rebound_rate       2300  N*s/m
bump_rate           940  N*s/m
stroke              165  mm
