title              front damper, road
rebound_rate       2150  N*s/m
bump_rate           980  N*s/m
stroke              165  mm
