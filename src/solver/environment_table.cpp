// The table of environment variables.

#include "solver/environment_table.h"

constexpr vek_env_row vek_env_table[] = {
    {"FLT_TIRE_TLF", "Tavik/Tire will scale the vertical load of a flat tire by the tire load "
                     "factor <value> (default = 1.0)."},
    {"KLV_VORN_DFFDEP_WARN", "Tavik/Vorn will warn about each data file in a deprecated file "
                             "format (if set to 'yes'); default='no'."},
    {"KLV_VORN_VARIANT", "SKIP"},
    {"KLV_VORN_XTRAP_WARN", "Tavik/Vorn will warn when a spline is extrapolated beyond its data "
                            "points (if set to 'yes'); default='no'."},
    {"KLV_VEK_SEARCH",
     "Tavik/Vorn will restore the vek search algorithm from version 12.0 (if set to 'yes').\n"
     "  Usage of this environment variable is strongly discouraged."},
    {"KLV_REQENV_SHOW", "SKIP"},
    {"QNS_3DSHELL_DBG", "Support for this environment variable has been discontinued; please use "
                        "QNS_3DSHELL_DEBUG instead."},
    {"QNS_3DSHELL_DEBUG", "The 3D-shell road code will output the triangles in contact with each "
                          "tire; default=0 (none), range=0-3."},
    {"QNS_3DSHELL_SKIP_SHADOW", "The 3D-shell road code will skip road triangles that lie in the "
                                "shadow of others, as below a bridge;\n"
                                "  default=0 (all are searched), range=0-1."},
    {"QNS_VORN_LEGACY_PTRAIN", "Tavik/Vorn will use the legacy powertrain equations for engine, "
                               "clutch and gearbox; default=0 (off), range=0-1."},
    {"QNS_VORN_SSCG0_TWEAK", "Tavik/Vorn will use <value> [g] as initial lateral acceleration for "
                             "steady state constant radius events."},
    {"QNS_VORN_STATIC_CLUTCH", "Tavik/Vorn will lock the clutch during static equilibrium; "
                               "default=0 (clutch slips), range=0-1."},
    {"QNS_VORN_SIM_FAIL", "Tavik/Vorn will respond to a failed simulation with (0=a message,1=the "
                          "next run,2=an exit); default=0."},
    {"QNS_TAVIK_FTIRE_NOROAST", "FTire will evaluate the road by itself, without the ROAST "
                                "interface; default=0 (ROAST in use), range=0-1."},
    {"QNS_TAVIK_TIRE_OBSTACLE_NORMAL", "Tavik/Tire will take the road normal on an obstacle from "
                                       "(0=the base road,1=the obstacle's surface); default=1."},
    {"QNS_TAVIK_TIRE_QS_USE_EFFRAD",
     "Tavik/Tire will use the effective rolling radius in quasi-static analyses; default=0 (loaded "
     "radius), range=0-1."},
    {"QNS_TAVIK_TIRE_ROAD_EDGE_STOP",
     "Tavik/Tire will stop the simulation when a tire runs over the edge of the road; default=0 "
     "(road is extended), range=0-1."},
    {"QNS_TAVIK_TIRE_SMP", "Tavik/Tire will compute the tire forces in <value> parallel threads; "
                           "default=1 (serial), range=1-64."},
    {"QNS_TAVIK_TIRE_DIS_M_AND_I", "Tavik/Tire will disregard the mass and the moments of inertia "
                                   "in tire property files; default=0 (applied), range=0-1."},
    {"COSIN_PREFIX", "FTire will load the COSIN libraries from directory <value> (default = the "
                     "directory of the installation)."},
    {"QNS_TDFT_OPTIMIZER", "The tire data fitting tool will fit tire parameters using "
                           "(0=gradient,1=simplex,2=genetic) optimizers; default=0."},
    {"QNS_TAVIK_VDM_DEBUG",
     "Tavik/Gyrant will output additional debugging information; default=0 (none), range=0-4."},
    {"QNS_TAVIK_VDM_SENSUB", "Tavik/Gyrant will test the end conditions of maneuvers in a sensor "
                             "subroutine; default=1 (on), range=0-1."},
    {"QNS_CARAT_MSG_RPNFRC", "The Carat code will output messages of routine RPNFRC on each force "
                             "expression evaluated; default=0 (none), range=0-2."},
    {"QNS_CARAT_MSG_UVCHEK", "The Carat code will output messages of routine UVCHEK on vectors "
                             "that are not of unit length; default=0 (none), range=0-2."},
    {"QNS_CARAT_MSG_VRMOTN", "The Carat code will output messages of routine VRMOTN on motions "
                             "driven by a variable; default=0 (none), range=0-2."},
    {"QNS_MULTILINE_XML", "Tavik/Vorn will write each attribute of an XML file on a line of its "
                          "own; default=0 (one line per element), range=0-1."},
    {"QNS_OPENCRG_APPLY_MODIFIERS", "The OpenCRG code will apply the scale and offset modifiers in "
                                    "the header of a road file; default=1 (on), range=0-1."},
    {"QNS_CRG_MESSAGE_LEVEL",
     "The level of messaging by the OpenCRG code can be changed to:\n"
     " 0 (None), 1 (Fatal, is default), 2 (Warn), 3 (Notice), 4 (Info), 5 (Debug)."},
    {"QNS_GY_ACT_FILTER_RESET", "Tavik/Gyrant will reset the filters of its actuator signals at "
                                "the start of each maneuver; default=0 (off), range=0-1."},
    {"QNS_GY_ADAPTIVE_SAMPLING", "Tavik/Gyrant will adapt its sample period to vehicle speed and "
                                 "path curvature; default=0 (fixed period), range=0-1."},
    {"QNS_GY_ALLOW_PATH_TRANSFORM",
     "Tavik/Gyrant will move and rotate a path to begin at the vehicle's initial position and "
     "heading; default=1 (on), range=0-1."},
    {"QNS_GY_ANTI_HUNTING_TAU", "Tavik/Gyrant will use <value> as time constant of the filter "
                                "against gear hunting (default = 0.5 s)."},
    {"QNS_GY_BANK_MULTIPL", "Tavik/Gyrant will multiply the bank angle of the road by <value> when "
                            "computing the cornering speed (default = 1.0)."},
    {"QNS_GY_CONN_CONTOUR_TYPE", "Tavik/Gyrant will connect the vehicle to its path with "
                                 "(0=straight,1=circular,2=clothoid) contours; default=2."},
    {"QNS_GY_CONTRARY_RAX", "Tavik/Gyrant will follow a requested longitudinal acceleration whose "
                            "sign is contrary to the speed error;\n"
                            "  default=0 (request is set to zero), range=0-1."},
    {"QNS_GY_CURV_MIN_PERCENT_CHANGE",
     "Tavik/Gyrant will keep a path point only if the curvature changes there by <value> percent "
     "or more (default = 1.0 %)."},
    {"QNS_GY_FFTRQ_ROLRES", "Tavik/Gyrant will add the rolling resistance of the tires to the "
                            "feed-forward drive torque; default=1 (on), range=0-1."},
    {"QNS_GY_GAIN_LATAYCD", "Tavik/Gyrant will use <value> as derivative gain of the lateral "
                            "acceleration controller for cornering (default = 0.0)."},
    {"QNS_GY_GAIN_LATAYCI", "Tavik/Gyrant will use <value> as integral gain of the lateral "
                            "acceleration controller for cornering (default = 0.2)."},
    {"QNS_GY_GAIN_LATAYCP", "Tavik/Gyrant will use <value> as proportional gain of the lateral "
                            "acceleration controller for cornering (default = 0.5)."},
    {"QNS_GY_GAIN_LATAYD", "Tavik/Gyrant will use <value> as derivative gain of the lateral "
                           "acceleration controller (default = 0.0)."},
    {"QNS_GY_GAIN_LATAYI", "Tavik/Gyrant will use <value> as integral gain of the lateral "
                           "acceleration controller (default = 0.1)."},
    {"QNS_GY_GAIN_LATAYP", "Tavik/Gyrant will use <value> as proportional gain of the lateral "
                           "acceleration controller (default = 0.3)."},
    {"QNS_GY_GAIN_LATPTHD", "Tavik/Gyrant will use <value> as derivative gain of the lateral path "
                            "controller (default = 0.05)."},
    {"QNS_GY_GAIN_LATPTHI", "Tavik/Gyrant will use <value> as integral gain of the lateral path "
                            "controller (default = 0.0)."},
    {"QNS_GY_GAIN_LATPTHP", "Tavik/Gyrant will use <value> as proportional gain of the lateral "
                            "path controller (default = 1.0)."},
    {"QNS_GY_GAIN_LONAXD", "Tavik/Gyrant will use <value> as derivative gain of the longitudinal "
                           "acceleration controller (default = 0.0)."},
    {"QNS_GY_GAIN_LONAXI", "Tavik/Gyrant will use <value> as integral gain of the longitudinal "
                           "acceleration controller (default = 0.5)."},
    {"QNS_GY_GAIN_LONAXP", "Tavik/Gyrant will use <value> as proportional gain of the longitudinal "
                           "acceleration controller (default = 0.2)."},
    {"QNS_GY_GAIN_LONVXD", "Tavik/Gyrant will use <value> as derivative gain of the longitudinal "
                           "velocity controller (default = 0.0)."},
    {"QNS_GY_GAIN_LONVXI", "Tavik/Gyrant will use <value> as integral gain of the longitudinal "
                           "velocity controller (default = 0.1)."},
    {"QNS_GY_GAIN_LONVXP", "Tavik/Gyrant will use <value> as proportional gain of the longitudinal "
                           "velocity controller (default = 0.8)."},
    {"QNS_GY_GAIN_STEFRCD", "Tavik/Gyrant will use <value> as derivative gain of the steering "
                            "force controller (default = 0.0)."},
    {"QNS_GY_GAIN_STEFRCI", "Tavik/Gyrant will use <value> as integral gain of the steering force "
                            "controller (default = 10.0)."},
    {"QNS_GY_GAIN_STEFRCP", "Tavik/Gyrant will use <value> as proportional gain of the steering "
                            "force controller (default = 100.0)."},
    {"QNS_GY_GAIN_STETRQD", "Tavik/Gyrant will use <value> as derivative gain of the steering "
                            "torque controller (default = 0.0)."},
    {"QNS_GY_GAIN_STETRQI", "Tavik/Gyrant will use <value> as integral gain of the steering torque "
                            "controller (default = 1.0)."},
    {"QNS_GY_GAIN_STETRQP", "Tavik/Gyrant will use <value> as proportional gain of the steering "
                            "torque controller (default = 5.0)."},
    {"QNS_GY_INTERPOLATION_STEP", "Tavik/Gyrant will use <value> as distance between the points of "
                                  "an interpolated path (default = 0.5 m)."},
    {"QNS_GY_INTERPOLATION_TYPE",
     "Tavik/Gyrant will interpolate sparse paths using "
     "(0=none,1=cubic,2=smooth,3=optimal,4=bspline) methods; default=1."},
    {"QNS_GY_KICKDOWN_POWER_RATIO",
     "Support for this environment variable will soon be discontinued; please use "
     "QNS_GY_POWER_SHIFTING_RATIO instead."},
    {"QNS_GY_LONGITUDINAL_SETUP_TYPE",
     "Tavik/Gyrant will set up its longitudinal controller from (0=powertrain data,1=a test "
     "run,2=the driver file); default=0."},
    {"QNS_GY_ORIG_CURVATURE", "Tavik/Gyrant will use the curvature of the original path points; "
                              "default=0 (of the interpolated path), range=0-1."},
    {"QNS_GY_PATH_DECIMATE", "Tavik/Gyrant will use only one out of <value> points of a dense "
                             "path; default=1 (all points), range=1-100."},
    {"QNS_GY_PATH_DUMP_INTERVAL", "Tavik/Gyrant will use <value> as distance between the points "
                                  "written for QNS_GY_PATH_DUMP (default = 1.0 m)."},
    {"QNS_GY_PATH_DUMP", "Tavik/Gyrant will write to a file (0=no path,1=the target path,2=the "
                         "target path and the connecting contour); default=0."},
    {"QNS_GY_PATHTOL", "Tavik/Gyrant will use <value> as tolerance for the distance of a smoothed "
                       "path from its given points (default = 0.01 m)."},
    {"QNS_GY_POWER_SHIFTING_RATIO", "Tavik/Gyrant will shift down when the power demand exceeds "
                                    "<value> times the power available in the current gear\n"
                                    "  (default = 0.9)."},
    {"QNS_GY_PRESERVE_TBI", "Tavik/Gyrant will preserve the initial throttle and brake inputs "
                            "(TBI) found by the static setup; default=0 (off), range=0-1."},
    {"QNS_GY_ROLL_INFO_ARRAY_ID", "Tavik/Gyrant will read the roll properties of the vehicle from "
                                  "the solver array with identifier <value>; default=0 (none)."},
    {"QNS_GY_S_START", "Tavik/Gyrant will start to follow the path at the path coordinate s = "
                       "<value> (default = 0.0 m)."},
    {"QNS_GY_SAMPLE_PERIOD",
     "Tavik/Gyrant will use <value> as sample period of its controllers (default = 0.01 s)."},
    {"QNS_GY_SBASED_PREVIEW", "Tavik/Gyrant will preview the path by a distance along the path "
                              "coordinate s; default=0 (by a time), range=0-1."},
    {"QNS_GY_SPLINE_ORDER", "Tavik/Gyrant will use splines of order <value> for path interpolation "
                            "by bspline; default=4, range=2-6."},
    {"QNS_GY_STANG_MAX", "Tavik/Gyrant will use -/+ <value> as new limits for steering wheel angle "
                         "(default = 720.0 deg)."},
    {"QNS_GY_STDSP_MAX", "Tavik/Gyrant will use -/+ <value> as new limits for steering rack "
                         "displacement (default = 1.0 m)."},
    {"QNS_GY_STFRC_MAX", "Tavik/Gyrant will use -/+ <value> as new limits for steering rack force "
                         "(default = 10000.0 N)."},
    {"QNS_GY_STTRQ_MAX", "Tavik/Gyrant will use -/+ <value> as new limits for steering wheel "
                         "torque (default = 100.0 Nm)."},
    {"QNS_GY_TAPI_ISO_CHECK", "Tavik/Gyrant will check that forces from the tire interface follow "
                              "the ISO sign convention; default=0 (off), range=0-1."},
    {"QNS_GY_TIRE_API", "Tavik/Gyrant will obtain tire characteristics through (0=its own tire "
                        "model,1=the Tavik/Tire interface); default=1."},
    {"QNS_GY_USE_ALPHA", "Tavik/Gyrant will include the tire slip angle alpha in its estimate of "
                         "the steering angle; default=0 (off), range=0-1."},
    {"QNS_GY_USE_ENGLIM", "Tavik/Gyrant will observe the engine speed limits when selecting a "
                          "gear; default=1 (on), range=0-1."},
    {"QNS_GY_USE_FIT_YAW0", "Tavik/Gyrant will fit the initial yaw angle to the first path points; "
                            "default=0 (first segment only), range=0-1."},
    {"QNS_GY_USE_SPLINE", "Tavik/Gyrant will represent the target path by a spline; default=1 (0 = "
                          "by straight segments), range=0-1."},
    {"QNS_GY_USE_XML_HMAX", "Tavik/Gyrant will take the maximum integration step HMAX from the XML "
                            "event file; default=1 (on), range=0-1."},
    {"QNS_GY_VMAP_INTERPOLATION_TYPE", "Tavik/Gyrant will interpolate velocity maps using "
                                       "(0=stepwise,1=linear,2=cubic) methods; default=1."},
    {"QNS_GY_VL_STA_LIM_LHRH", "Tavik/Gyrant will determine the static limits of lateral velocity "
                               "for left-hand and right-hand turns separately;\n"
                               "  default=0 (same limits for both), range=0-1."},
    {"QNS_VDM_SSE_OUTPUT", "Tavik/Gyrant will output the iterations of the steady state "
                           "equilibrium (SSE) before a maneuver; default=0 (none), range=0-2."},
    {"QNS_VEHICLE_SOLVER_CXX",
     "The vehicle solver will run its (0=Fortran,1=C++) implementation; default=1."},
    {"PERPENDICULAR_ROAD_NORMAL", "Support for this environment variable has been discontinued; "
                                  "the triggered behavior has become the default."},
    {"QS_USE_VARINF", "The solver will pass information on variables (VARINF) to subroutines in "
                      "quasi-static analyses; default=0 (off), range=0-1."},
    {"VDM_DIFFERENCE_GY",
     "Tavik/Gyrant will differentiate the vehicle model using (0=analytic,1=forward "
     "difference,2=central difference) methods; default=0."},
    {"VEHICLE_SOLVER_DEBUG", "The vehicle solver will output its states and residuals at each "
                             "step; default=0 (none), range=0-3."},
    {"CRG_MESSAGE_LEVEL", "The OpenCRG code will print messages up to level <value>, unless "
                          "QNS_CRG_MESSAGE_LEVEL is set; default=1, range=0-5."},
    {"QNS_TAVIK_TIRE_ROAD_KEEP_LEVEL",
     "Tavik/Tire will keep the road at the level of its last contact point where it has no data; "
     "default=0 (off), range=0-1."},
    {"QNS_TAVIK_RIDE_HPIT_MEAS_METHOD",
     "Tavik/Ride will measure heave and pitch using (0=wheel center,1=contact patch,2=body marker) "
     "methods; default=0."},
    {"QNS_TAVIK_TIRE_SUSP_NONLINEAR", "Tavik/Tire will use nonlinear suspension characteristics in "
                                      "quasi-static analyses; default=0 (linear), range=0-1."},
};

constexpr short vek_env_count = sizeof vek_env_table / sizeof *vek_env_table;
