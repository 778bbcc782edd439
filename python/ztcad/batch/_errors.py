"""What ends a batch. A document never does: what is wrong with it is in its report."""


class BatchError(Exception):
    """The batch cannot go on. The reports that were yielded before are complete."""


class ProgramError(BatchError):
    """The program ztcad is missing, does not run, or does not accept its arguments."""


class ClusterError(BatchError):
    """The cluster does not do the work: its scheduler is lost, or the work was cancelled."""


class NoWorkersError(ClusterError):
    """The cluster had no worker for longer than was allowed."""
