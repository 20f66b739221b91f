Finish
